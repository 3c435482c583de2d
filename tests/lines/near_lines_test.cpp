// What the labels of a plot say to whoever points at them. Lines: see the tests of the mouse.
#include "lines/near_lines.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "lines/lines_fixture.h"

namespace orvantis {
namespace {

class NearLines : public LinesOnASurface {
  protected:
    // Plots the chart as a command does.
    void Plot() {
        PlotMap4(kFalse, surface_, kFalse);
        ASSERT_FALSE(plotState.interrupted);
    }

    // The only label of the plot.
    static LineLabel TheLabel() {
        EXPECT_EQ(chartLines.objects.size(), 1U);
        return chartLines.objects.empty() ? LineLabel{} : chartLines.objects[0];
    }

    static std::string FirstNameAt(const LineLabel& label) {
        const std::vector<std::string> names = NamesNear(label.x, label.y);
        return names.empty() ? "" : names[0];
    }
};

// The label's position before it was moved lies up to half a box nearer the edge.
TEST_F(NearLines, ABodyOverheadAtTheEdgeOfAFlatMapIsNamedWhereItsLabelStands) {
    struct Row {
        float ra, dec;
    };
    for (const std::size_t type : {1, 7}) {
        for (const Row& row : {Row{179.8F, 20}, Row{-179.8F, -20}, Row{40, 89.8F}, Row{40, -89.8F},
                               Row{179.8F, 89.8F}}) {
            ShowTypes({type});
            Place(3, row.ra, row.dec);
            Plot();
            const LineLabel label = TheLabel();
            const auto [x, y] = PixelsOf(row.dec, row.ra);
            EXPECT_GT(std::max(std::abs(label.x - x), std::abs(label.y - y)), 1) << "it is moved";
            EXPECT_EQ(FirstNameAt(label), "The Sun - Overhead")
                << "type " << type << " ra " << row.ra << " dec " << row.dec;
        }
    }
}

TEST_F(NearLines, ABodyOverheadAtAGlobesLimbIsNamedWhereItsLabelStands) {
    for (const std::int16_t globe : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        for (const std::size_t type : {1, 7}) {
            Globe(0, 0, globe);
            ShowTypes({type});
            Place(3, 89.5F, 20);
            Plot();
            const LineLabel label = TheLabel();
            const auto [x, y] = PixelsOf(20, 89.5);
            EXPECT_GT(std::max(std::abs(label.x - x), std::abs(label.y - y)), 1) << "it is moved";
            EXPECT_EQ(FirstNameAt(label), "The Sun - Overhead") << globe << " type " << type;
        }
    }
}

// Within a label of the map's edge the meridian lies up to half a box off the label.
TEST_F(NearLines, TheNameOfABodyOverheadComesWithItsCulminationWhereverTheLabelIsMoved) {
    for (const float ra : {179.8F, -179.8F}) {
        Place(3, ra, 20);
        Chart().Lon[3] = ra > 0 ? 179.8F : 180.2F;
        ShowTypes({1});
        Plot();
        LineLabel label = TheLabel();
        // The part of the box that is farther from the edge.
        const int half = mapView.glyphWidth / 2;
        label.x = static_cast<std::int16_t>(label.x + (ra > 0 ? -half : half));
        EXPECT_GT(std::abs(label.x - PixelsOf(20, ra).first), LineReach()) << "off the line";
        EXPECT_EQ(NamesNear(label.x, label.y),
                  (std::vector<std::string>{"The Sun - Overhead", "The Sun - Culminate"}))
            << ra;
        options.lineMode = 2;
        Plot();
        EXPECT_EQ(NamesNear(label.x, label.y),
                  (std::vector<std::string>{"The Sun - Overhead", "The Sun - MC"}));
        options.lineMode = 1;
        ShowTypes({7});
        Plot();
        EXPECT_EQ(NamesNear(label.x, label.y), std::vector<std::string>{"The Sun - Overhead"})
            << "no such line is on";
    }
}

// Stars have no names yet: they are told by the letters of their labels.
TEST_F(NearLines, AStarOverheadIsNamedAndItsCulminationOnlyOnItsLine) {
    struct Row {
        std::size_t point;
        const char* name;
    };
    for (const Row& row :
         {Row{37, "Star A"}, Row{62, "Star Z"}, Row{63, "Star a"}, Row{72, "Star j"}}) {
        for (std::size_t p = 1; p <= 72; ++p) pointSelection[p] = kFalse;
        Place(row.point, 179.8F, 20);
        ShowTypes({1});
        Plot();
        const LineLabel label = TheLabel();
        const int half = mapView.glyphWidth / 2;
        const auto inside = static_cast<float>(label.x - half);
        EXPECT_EQ(NamesNear(inside, label.y),
                  std::vector<std::string>{std::string(row.name) + " - Overhead"});
        const auto onLine = static_cast<float>(PixelsOf(-40, 179.8).first);
        EXPECT_EQ(NamesNear(onLine, static_cast<float>(PixelsOf(-40, 179.8).second)),
                  std::vector<std::string>{std::string(row.name) + " - Culminate"});
    }
}

// A body overhead at the very antipode of a globe's centre isn't at the centre.
TEST_F(NearLines, ABodyOverheadAtTheAntipodeOfAGlobesCentreHasNoLabel) {
    for (const std::int16_t globe : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        for (const std::size_t type : {1, 3, 4, 7}) {
            Globe(0, 0, globe);
            ShowTypes({type});
            Place(3, type == 3 ? 270.0F : type == 4 ? 90.0F : 180.0F, 0);
            Plot();
            EXPECT_TRUE(chartLines.objects.empty()) << globe << " type " << type;
            EXPECT_TRUE(NamesNear(static_cast<float>(PixelsOf(0, 0).first + 60),
                                  static_cast<float>(PixelsOf(0, 0).second + 40))
                            .empty());
        }
    }
}

// The meridian lines of the zodiacal mode leave ecliptic latitude out; the direction of a body and
// the place where it is overhead don't. The Moon here is 5 degrees off the ecliptic: at longitude
// 100 it has about 100.9 and 28.1 degrees of right ascension and declination.
TEST_F(NearLines, InTheZodiacalModeABodyOverheadIsNamedWithOrWithoutItsMeridian) {
    options.lineMode = 2;
    for (const std::size_t type : {1, 7}) {
        ShowTypes({type});
        Place(1, 100.9F, 28.1F);
        Chart().Lon[1] = 100;
        Chart().Lat[1] = 5;
        Plot();
        EXPECT_EQ(FirstNameAt(TheLabel()), "The Moon - Overhead") << "type " << type;
    }
}

TEST_F(NearLines, InTheGeodeticZodiacABodyOverheadIsNamed) {
    options.mapZodiac = 1;
    ShowTypes({1});
    Place(3, 40, 10);
    Chart().Lon[3] = 60;
    Chart().Lat[3] = 4;
    Plot();
    EXPECT_EQ(FirstNameAt(TheLabel()), "The Sun - Overhead");
}

// The horizon of a place on the equator: over the poles it isn't drawn along the map's edge.
TEST_F(NearLines, ALineOverAPoleIsFoundOnItsMeridiansAndNotAlongTheEdgeOfTheMap) {
    ShowTypes({9});
    chartNow.PlaceLat = 0;
    chartNow.PlaceLongW = 0;
    Plot();
    const auto x = static_cast<float>(PixelsOf(0, 90).first);
    const auto top = static_cast<float>(mapView.rect.top + 1);
    EXPECT_EQ(NamesNear(x, top), std::vector<std::string>{"Horizon"});
    EXPECT_TRUE(NamesNear(x - 60, top).empty());
    EXPECT_TRUE(NamesNear(x + 60, top).empty());
}

// Also when another chart has been chosen that isn't drawn yet.
TEST_F(NearLines, AChartThatWasClosedLeavesNoLabelsForAClickToFind) {
    ShowTypes({1});
    Place(3, 40, 10);
    Plot();
    const LineLabel label = TheLabel();
    EXPECT_EQ(FirstNameAt(label), "The Sun - Overhead");

    session.ChartNumber = 0;
    Plot();
    EXPECT_TRUE(chartLines.objects.empty());
    EXPECT_TRUE(chartLines.labels.empty());
    EXPECT_TRUE(mapView.edgeMarks.empty());
    EXPECT_TRUE(NamesNear(label.x, label.y).empty());

    session.ChartNumber = 1;
    EXPECT_NE(FirstNameAt(label), "The Sun - Overhead");
}

TEST_F(NearLines, TheLabelsOfRiseAndSetLinesAreNamedByTheirLines) {
    ShowTypes({3, 4});
    Place(3, 40, 10);
    Plot();
    ASSERT_EQ(chartLines.objects.size(), 2U);
    EXPECT_EQ(NamesNear(chartLines.objects[0].x, chartLines.objects[0].y),
              std::vector<std::string>{"The Sun - Rise"});
    EXPECT_EQ(NamesNear(chartLines.objects[1].x, chartLines.objects[1].y),
              std::vector<std::string>{"The Sun - Set"});
}

}  // namespace
}  // namespace orvantis
