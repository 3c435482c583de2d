// Charts for the tests of chart files, and their comparison field by field.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "charts/chart_lists.h"

namespace orvantis {

inline void ExpectSameEvent(const ChartEvent& a, const ChartEvent& b) {
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.place, b.place);
    EXPECT_EQ(a.country, b.country);
    EXPECT_EQ(a.longitude, b.longitude);
    EXPECT_EQ(a.latitude, b.latitude);
    EXPECT_EQ(a.year, b.year);
    EXPECT_EQ(a.month, b.month);
    EXPECT_EQ(a.day, b.day);
    EXPECT_EQ(a.hour, b.hour);
    EXPECT_EQ(a.minute, b.minute);
    EXPECT_EQ(a.second, b.second);
    EXPECT_EQ(a.zoneHours, b.zoneHours);
    EXPECT_EQ(a.zoneName, b.zoneName);
    EXPECT_EQ(a.reservedEvent, b.reservedEvent);
}

inline void ExpectSameChart(const FileChart& a, const FileChart& b) {
    EXPECT_EQ(a.chartType, b.chartType);
    EXPECT_EQ(a.chartSubType, b.chartSubType);
    ExpectSameEvent(a.event, b.event);
    EXPECT_EQ(a.reserved1, b.reserved1);
    EXPECT_EQ(a.reserved2, b.reserved2);
    EXPECT_EQ(a.reserved3, b.reserved3);
    EXPECT_EQ(a.reserved4, b.reserved4);
    EXPECT_EQ(a.houseCode, b.houseCode);
    EXPECT_EQ(a.ayanamsaCode, b.ayanamsaCode);
    EXPECT_EQ(a.ayanamsaValue, b.ayanamsaValue);
    EXPECT_EQ(a.recordForm, b.recordForm);
    EXPECT_EQ(a.commentRef, b.commentRef);
    ExpectSameEvent(a.event2, b.event2);
    EXPECT_EQ(a.extra1, b.extra1);
    EXPECT_EQ(a.extra2, b.extra2);
    EXPECT_EQ(a.extraPair, b.extraPair);
    EXPECT_EQ(a.chartFlags, b.chartFlags);
    EXPECT_EQ(a.extra3, b.extra3);
    EXPECT_EQ(a.extra4, b.extra4);
}

inline void ExpectSameStored(const StoredChart& a, const StoredChart& b) {
    ExpectSameChart(a.chart, b.chart);
    EXPECT_EQ(a.comment, b.comment);
    ASSERT_EQ(a.attachments.size(), b.attachments.size());
    for (std::size_t i = 0; i < a.attachments.size(); ++i) {
        ExpectSameEvent(a.attachments[i].event, b.attachments[i].event);
        EXPECT_EQ(a.attachments[i].note, b.attachments[i].note);
    }
}

/// A list of charts that every type can hold but for their comments; every third has none.
inline ChartList SampleList(int charts) {
    ChartList list;
    list.description = "Sample";
    for (int n = 1; n <= charts; ++n) {
        StoredChart stored;
        stored.chart.event.name = "Chart number " + std::to_string(n);
        stored.chart.event.place = "Place " + std::to_string(n % 50);
        stored.chart.event.country = "Country";
        stored.chart.event.longitude = static_cast<float>(n % 360 - 180);
        stored.chart.event.latitude = static_cast<float>(n % 180 - 90);
        stored.chart.event.year = static_cast<std::int16_t>(1900 + n % 100);
        stored.chart.event.month = static_cast<std::uint8_t>(n % 12 + 1);
        stored.chart.event.day = static_cast<std::uint8_t>(n % 28 + 1);
        stored.chart.event.zoneHours = 0.5F;
        stored.chart.event.zoneName = "ZT";
        stored.chart.houseCode = 5;
        stored.chart.ayanamsaCode = 1;
        stored.chart.commentRef = n;
        if (n % 3 != 0) stored.comment = "Comment of chart " + std::to_string(n) + ", two blocks.";
        list.charts.push_back(stored);
    }
    return list;
}

}  // namespace orvantis
