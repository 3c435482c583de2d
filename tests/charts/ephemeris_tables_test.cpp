#include "charts/ephemeris_tables.h"

#include <gtest/gtest.h>

namespace orvantis {
namespace {

TEST(EphemerisTables, AFileIsNamedByTheCenturyItServes) {
    EXPECT_EQ(TableFileName(TableSeries::Asteroids, 19), "AS19AD.EPH");
}

}  // namespace
}  // namespace orvantis
