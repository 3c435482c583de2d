#include "desktop/status_panel.h"

#include <QCoreApplication>
#include <QPointer>
#include <gtest/gtest.h>

namespace orvantis {
namespace {

TEST(StatusPanel, ItStandsInTheMiddleOfTheAreaWithItsTextAndItsBar) {
    QWidget area;
    area.resize(901, 600);
    area.show();
    StatusPanel panel(&area);
    EXPECT_FALSE(panel.isVisible());
    panel.Tell(QStringLiteral("Loading map database for first use..."), 0);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(panel.x(), (901 - panel.width()) / 2);
    EXPECT_EQ(panel.y(), (600 - panel.height()) / 2);
    EXPECT_GE(panel.width(), 300);
    EXPECT_EQ(panel.findChild<QLabel*>()->text().toStdString(),
              "Loading map database for first use...");
    EXPECT_EQ(panel.findChild<QProgressBar*>()->value(), 0);

    // A longer text widens it; it stays in the middle.
    const int narrow = panel.width();
    panel.Tell(QString(100, u'x'), 67);
    EXPECT_GT(panel.width(), narrow);
    EXPECT_EQ(panel.x(), (901 - panel.width()) / 2);
    EXPECT_EQ(panel.findChild<QProgressBar*>()->value(), 67);
}

}  // namespace
}  // namespace orvantis
