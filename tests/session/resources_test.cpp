#include "session/resources.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>

#include "session/session_state.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

class Resources : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        session.ProgramDir = folder_.Path();
    }

    TempFolder folder_;
};

TEST_F(Resources, WithoutALibraryTheProgramsOwnStringsStand) {
    LoadResourceLibrary(kLanguageOfSystem, "EN", "OV2");
    EXPECT_EQ(ResString(471, 0), "Natal");
    EXPECT_EQ(ResString(470, 15), "Tert.Prog. (True)");
    EXPECT_EQ(ResString(600, 0), "Neptune on 1st");
    EXPECT_EQ(ResString(1, 0), "");
    EXPECT_EQ(ResString(-1, 0), "");
    EXPECT_EQ(ResString(32767, 32767), "");
}

TEST_F(Resources, TheListsOfChartWordsAreThese) {
    BuildChartWords();
    const std::vector<std::string> types = {"",
                                            "Natal",
                                            "Sec.Prog.",
                                            "Directed",
                                            "Return",
                                            "Combined",
                                            "Harmonic",
                                            "Antiscia",
                                            "Pre-Natal",
                                            "Rise/Set",
                                            "Lun.Phase",
                                            "Tert.Prog.",
                                            "Minor Prog.",
                                            "User Prog.",
                                            "Locality",
                                            "Tert.Prog. (True)"};
    EXPECT_EQ(chartWords.chartTypes, types);
    const std::vector<std::string> subtypes = {"",
                                               "Chart",
                                               "- Midpoints",
                                               "- Drv Asc",
                                               "- Drv MC",
                                               "Solar",
                                               "Lunar",
                                               "Advanced Options",
                                               "- Solar Arc",
                                               "- Asc Arc",
                                               "- Vtx Arc",
                                               "- User Arc",
                                               "- 0\xB0 Cap",
                                               "- 0\xB0 Ari",
                                               "Group - Drv Asc",
                                               "- Davison",
                                               "Bailey Conception",
                                               "Bailey Quickening",
                                               "Bailey Birth (C)",
                                               "Bailey Birth (Q)",
                                               "Jayne Vulcan",
                                               "Jayne Uranus (C)",
                                               "Jayne Sigma",
                                               "Jayne Isis",
                                               "Jayne Mercury",
                                               "Jayne Neptune (A)",
                                               "Jayne Rex",
                                               "Jayne Lion",
                                               "Jayne Mars",
                                               "Jayne Morya",
                                               "Jayne Pluto",
                                               "Jayne Moon",
                                               "Jayne Sun",
                                               "Jayne Chiron",
                                               "Jayne Venus",
                                               "Jayne Jupiter",
                                               "Jayne Birth (C)",
                                               "Coalescent",
                                               "Arc Transform",
                                               "Johndro (R.A.)",
                                               "Johndro (Long.)",
                                               "Geodetic (R.A.)",
                                               "Geodetic (Long.)",
                                               "Relocated",
                                               "Wynn Key",
                                               "Progressed Solar",
                                               "- User Arc",
                                               "- Profection (Annual)"};
    EXPECT_EQ(chartWords.chartSubtypes, subtypes);
    EXPECT_EQ(chartWords.chartSubtypes.size(), 48U);
}

TEST_F(Resources, TheThirdListShowsFiveEntriesOfTheHouseList) {
    BuildChartWords();
    EXPECT_EQ(chartWords.thirdList,
              (std::vector<std::string>{"", "Pluto on 1st", "N Node on 1st", "Vertex on 7th",
                                        "EP on 1st", "MC on 10th"}));
}

TEST_F(Resources, ALibraryWhoseString470Is16HasSixteenChartTypes) {
    std::string library = "470=16\r\n";
    for (int i = 1; i <= 20; ++i) {
        library += std::to_string(470 + i) + "=Art " + std::to_string(i) + "\r\n";
    }
    folder_.Write("OV2EN.TXT", library);
    LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
    BuildChartWords();
    ASSERT_EQ(chartWords.chartTypes.size(), 17U);
    EXPECT_EQ(chartWords.chartTypes[1], "Art 1");
    EXPECT_EQ(chartWords.chartTypes[16], "Art 16");
}

TEST_F(Resources, ACountBelowOneTakesTheListsOwn) {
    for (const char* count : {"0", "-4", "none"}) {
        std::string library = "470=" + std::string(count) + "\n";
        for (int i = 471; i <= 489; ++i) library += std::to_string(i) + "=x\n";
        folder_.Write("OV2EN.TXT", library);
        LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
        BuildChartWords();
        EXPECT_EQ(chartWords.chartTypes.size(), 16U) << count;
    }
}

TEST_F(Resources, ListsOfAShortLibraryAreFilledUpToTheirCounts) {
    folder_.Write("OV2EN.TXT", "470=32767\n471=a\n472=b\n");
    LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
    BuildChartWords();
    ASSERT_EQ(chartWords.chartTypes.size(), 32768U);
    EXPECT_EQ(chartWords.chartTypes[2], "b");
    EXPECT_EQ(chartWords.chartTypes[3], "");
    EXPECT_EQ(chartWords.chartTypes[32767], "");
    EXPECT_EQ(chartWords.chartSubtypes, std::vector<std::string>(48));
    EXPECT_EQ(chartWords.thirdList, std::vector<std::string>(6));

    std::vector<std::string> array = {"old", "old", "old"};
    ResStringList(471, array, 0);
    EXPECT_EQ(array, (std::vector<std::string>{"b", "", ""}));
    ResStringList(32767, array, 4);
    EXPECT_EQ(array, std::vector<std::string>(4));
}

TEST_F(Resources, ACountIsRoundedToNearestTiesToEven) {
    struct Row {
        const char* count;
        std::size_t entries;
    };
    constexpr std::array<Row, 8> rows = {{{"0.4", 15},
                                          {"0.5", 15},
                                          {"0.6", 1},
                                          {"1.5", 2},
                                          {"2.4", 2},
                                          {"2.5", 2},
                                          {"3.5", 4},
                                          {"1e300", 32767}}};
    for (const Row& row : rows) {
        folder_.Write("OV2EN.TXT", "470=" + std::string(row.count) + "\n471=a\n");
        LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
        BuildChartWords();
        EXPECT_EQ(chartWords.chartTypes.size(), row.entries + 1) << row.count;
    }
}

TEST_F(Resources, ALibraryThatIsThereStandsForTheWholeTable) {
    folder_.Write("OV2EN.TXT", "471=Geburt\n");
    LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
    EXPECT_EQ(ResString(471, 0), "Geburt");
    EXPECT_EQ(ResString(472, 0), "");
    ReleaseResourceLibrary();
    EXPECT_EQ(ResString(471, 0), "Natal");
    EXPECT_EQ(ResString(472, 0), "Sec.Prog.");
}

TEST_F(Resources, TheLanguageIsTheDesktopsOrTheOneGiven) {
    folder_.Write("OV2DE.TXT", "471=Geburt\n");
    folder_.Write("OV2FR.TXT", "471=Naissance\n");
    TestShell().language = "deu";
    LoadResourceLibrary(kLanguageOfSystem, "FR", "OV2");
    EXPECT_EQ(ResString(471, 0), "Geburt");
    LoadResourceLibrary(kLanguageGiven, "FR", "OV2");
    EXPECT_EQ(ResString(471, 0), "Naissance");
    LoadResourceLibrary(kLanguageGiven, "IT", "OV2");
    EXPECT_EQ(ResString(471, 0), "Natal");
}

TEST_F(Resources, ALibraryOfTheShippedFilesServesWhereTheProgramsFolderHasNone) {
    std::filesystem::create_directories(folder_.File("shipped"));
    session.ShippedDir = folder_.Path() + "shipped\\";
    folder_.Write("shipped/OV2EN.TXT", "471=Shipped\n");
    LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
    EXPECT_EQ(ResString(471, 0), "Shipped");
    folder_.Write("OV2EN.TXT", "471=Own\n");
    LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
    EXPECT_EQ(ResString(471, 0), "Own");
}

TEST_F(Resources, LinesOfAnyOtherFormArePassedOver) {
    folder_.Write("OV2EN.TXT",
                  "\xEF\xBB\xBF"
                  "471=Z\xC3\xBCrich\r\n; 472=no\r\n=x\r\n472\r\n 472=no\r\n"
                  "99999999999=no\r\n-1=no\r\n471=second\r\n473=a=b");
    LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
    EXPECT_EQ(ResString(471, 0), "Z\xFCrich");
    EXPECT_EQ(ResString(472, 0), "");
    EXPECT_EQ(ResString(473, 0), "a=b");
}

TEST_F(Resources, AFileWithoutAnyStringIsNoLibrary) {
    folder_.Write("OV2EN.TXT", std::string(5000, '\0'));
    LoadResourceLibrary(kLanguageOfSystem, "", "OV2");
    EXPECT_EQ(ResString(471, 0), "Natal");
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(Resources, AListWithCountZeroFillsTheArrayAsItIs) {
    std::vector<std::string> array(3);
    ResStringList(470, array, 0);
    EXPECT_EQ(array, (std::vector<std::string>{"Natal", "Sec.Prog.", "Directed"}));
    ResStringList(600, array, 1);
    EXPECT_EQ(array, (std::vector<std::string>{"Pluto on 1st", "Sec.Prog.", "Directed"}));
    ResStringList(600, array, 5);
    EXPECT_EQ(array.size(), 5U);
    std::vector<std::string> none;
    ResStringList(470, none, 0);
    EXPECT_TRUE(none.empty());
}

}  // namespace
}  // namespace orvantis
