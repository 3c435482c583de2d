#include "text/typed_texts.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/reset_all.h"
#include "text/coordinates.h"
#include "text/dates.h"
#include "text/text_state.h"
#include "text/zones.h"

namespace orvantis {
namespace {

using typed::Order;

// Stands in the out values before a parser is called; no text in the tables means it.
constexpr std::int16_t kUntouched = 7777;

std::string Repeat(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

// A text in a message of a failed row: bytes outside ASCII as \xNN.
std::string Shown(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 32 && byte < 127) {
            result += c;
        } else {
            result += "\\x";
            result += kDigits[byte / 16];
            result += kDigits[byte % 16];
        }
    }
    return result + "\"";
}

std::string Note(std::string_view text, std::string_view rule) {
    return Shown(text) + ": " + std::string(rule);
}

// The line that a box leaves in the shell's log.
std::string BoxLine(std::string_view title, std::string_view text) {
    std::string line = "MessageBox|" + std::string(title) + "|";
    for (const char c : text) {
        if (c == '\r') {
            line += "\\r";
        } else if (c == '\n') {
            line += "\\n";
        } else {
            line += c;
        }
    }
    return line + "|Ok|Error";
}

// Some boxes have been shown, all with this title.
void ExpectOnlyTitle(std::string_view title) {
    EXPECT_FALSE(TestShell().log.empty());
    const std::string start = "MessageBox|" + std::string(title) + "|";
    for (const std::string& line : TestShell().log) EXPECT_EQ(line.substr(0, start.size()), start);
}

void Begin(Flag monthFirst = kFalse) {
    ResetAll();
    textState.shell = &TestShell();
    textState.MonthFirst = monthFirst;
}

using Lines = std::vector<std::string>;

void CheckDate(std::string_view text, Flag monthFirst, const typed::DateResult& expected) {
    Begin(monthFirst);
    std::int16_t day = kUntouched;
    std::int16_t month = kUntouched;
    std::int16_t year = kUntouched;
    std::int16_t errorFlag = kUntouched;
    ParseDateText(text, day, month, year, errorFlag);
    EXPECT_EQ(errorFlag, expected.errorFlag);
    if (expected.errorFlag == kFalse) {
        EXPECT_EQ(day, expected.day);
        EXPECT_EQ(month, expected.month);
        EXPECT_EQ(year, expected.year);
        EXPECT_EQ(TestShell().log, Lines{});
        return;
    }
    const std::string_view box = monthFirst ? expected.box.monthFirst : expected.box.dayFirst;
    if (box.empty()) {
        ExpectOnlyTitle(typed::kDateTitle);
    } else {
        EXPECT_EQ(TestShell().log, Lines{BoxLine(typed::kDateTitle, box)});
    }
}

void CheckDateInOrder(const typed::DateRow& row) {
    if (row.order != Order::MonthFirst) {
        SCOPED_TRACE("day first");
        CheckDate(row.text, kFalse, row.expected);
    }
    if (row.order != Order::DayFirst) {
        SCOPED_TRACE("month first");
        CheckDate(row.text, kTrue, row.expected);
    }
}

void CheckTime(std::string_view text, const typed::TimeResult& expected) {
    Begin();
    std::int16_t hours = kUntouched;
    std::int16_t minutes = kUntouched;
    std::int16_t seconds = kUntouched;
    std::int16_t errorFlag = kUntouched;
    ParseTimeText(text, hours, minutes, seconds, errorFlag);
    EXPECT_EQ(errorFlag, expected.errorFlag);
    if (expected.errorFlag == kFalse) {
        EXPECT_EQ(hours, expected.hours);
        EXPECT_EQ(minutes, expected.minutes);
        EXPECT_EQ(seconds, expected.seconds);
    } else if (expected.boxCount == 0) {
        ExpectOnlyTitle(typed::kTimeTitle);
        return;
    }
    Lines boxes;
    for (std::size_t i = 0; i < expected.boxCount; ++i) {
        boxes.push_back(BoxLine(typed::kTimeTitle, expected.boxes[i]));
    }
    EXPECT_EQ(TestShell().log, boxes);
}

using CoordinateParser = void (*)(std::string_view, double&, std::int16_t&);

void CheckCoordinate(CoordinateParser parser, std::string_view title, std::string_view text,
                     const typed::CoordinateResult& expected) {
    Begin();
    double value = kUntouched;
    std::int16_t errorFlag = kUntouched;
    parser(text, value, errorFlag);
    EXPECT_EQ(errorFlag, expected.errorFlag);
    if (expected.errorFlag == kFalse) {
        EXPECT_NEAR(value, expected.value, 1e-12);
        EXPECT_EQ(TestShell().log, Lines{});
        return;
    }
    EXPECT_EQ(value, kUntouched);
    if (expected.box.text.empty()) {
        ExpectOnlyTitle(title);
    } else {
        EXPECT_EQ(TestShell().log, Lines{BoxLine(expected.box.title, expected.box.text)});
    }
}

void CheckLatitude(std::string_view text, const typed::CoordinateResult& expected) {
    CheckCoordinate(ParseLatitude, "Error in Latitude", text, expected);
}

void CheckLongitude(std::string_view text, const typed::CoordinateResult& expected) {
    CheckCoordinate(ParseLongitude, "Error in Longitude", text, expected);
}

void FillZoneTable() {
    for (const typed::ZoneTableRow& row : typed::kZoneTable) {
        zones.ZoneMnemonic.emplace_back(row.mnemonic);
        zones.ZoneName.emplace_back(row.name);
        zones.ZoneTime.emplace_back(row.time);
        ++zones.ZoneCount;
    }
}

void CheckZone(std::string_view text, Flag showMessages, const typed::ZoneResult& expected) {
    Begin();
    FillZoneTable();
    float hours = kUntouched;
    std::string mnemonic = "before";
    std::int16_t errorFlag = kUntouched;
    ParseZoneText(text, hours, mnemonic, errorFlag, showMessages);
    EXPECT_EQ(errorFlag, expected.errorFlag);
    if (expected.errorFlag == kFalse) {
        EXPECT_FLOAT_EQ(hours, expected.hours);
        EXPECT_EQ(mnemonic, expected.mnemonic);
    } else {
        EXPECT_EQ(hours, kUntouched);
    }
    if (expected.errorFlag == kFalse || showMessages == kFalse) {
        EXPECT_EQ(TestShell().log, Lines{});
    } else if (expected.box.text.empty()) {
        ExpectOnlyTitle(typed::kZoneTitle);
    } else {
        EXPECT_EQ(TestShell().log, Lines{BoxLine(typed::kZoneTitle, expected.box.text)});
    }
}

TEST(TypedTexts, EveryDateOfTheTableIsUnderstoodOrRefusedInItsWords) {
    for (const typed::DateRow& row : typed::kDateRows) {
        SCOPED_TRACE(Note(row.text, row.rule));
        CheckDateInOrder(row);
    }
}

TEST(TypedTexts, EveryTimeOfTheTableIsUnderstoodOrRefusedInItsWords) {
    for (const typed::TimeRow& row : typed::kTimeRows) {
        SCOPED_TRACE(Note(row.text, row.rule));
        CheckTime(row.text, row.expected);
    }
}

TEST(TypedTexts, EveryLatitudeOfTheTableIsUnderstoodOrRefusedInItsWords) {
    for (const typed::CoordinateRow& row : typed::kLatitudeRows) {
        SCOPED_TRACE(Note(row.text, row.rule));
        CheckLatitude(row.text, row.expected);
    }
}

TEST(TypedTexts, EveryLongitudeOfTheTableIsUnderstoodOrRefusedInItsWords) {
    for (const typed::CoordinateRow& row : typed::kLongitudeRows) {
        SCOPED_TRACE(Note(row.text, row.rule));
        CheckLongitude(row.text, row.expected);
    }
}

TEST(TypedTexts, EveryZoneOfTheTableIsUnderstoodOrRefusedInItsWords) {
    for (const typed::ZoneRow& row : typed::kZoneRows) {
        SCOPED_TRACE(Note(row.text, row.rule));
        CheckZone(row.text, row.showMessages, row.expected);
    }
}

// The rows below are too long to be written out.

TEST(TypedTexts, ALongDateIsReadByTheSameRules) {
    const std::string blanks(300, ' ');
    const std::string zeros(300, '0');
    const std::string nines(300, '9');
    struct Row {
        std::string text;
        typed::DateResult expected;
        const char* rule;
    };
    const std::vector<Row> rows = {
        {blanks, Refused(typed::kDateFormat), "no field"},
        {std::string(300, '/'), Refused(typed::kDateFormat), "no field"},
        {std::string(300, 'A'), Refused(typed::kDateFormat), "one field"},
        {nines, Refused(typed::kDateFormat), "one field"},
        {std::string(300, '-'), Refused(typed::kDateFormat), "one field"},
        {std::string(300, '\0'), Refused(typed::kDateFormat), "one field"},
        {std::string(300, '\xFF'), Refused(typed::kDateFormat), "one field"},
        {Repeat("5 ", 150), Refused(typed::kDateFormat), "150 fields"},
        {Repeat("5X", 150), Refused(typed::kDateFormat), "300 fields"},
        {Repeat("ST", 150), Refused(typed::kDateFormat), "one field, less its first ST"},
        {"5 " + std::string(300, 'J') + " 1992", Refused(typed::kDateFormat), "no such month"},
        {"5 JANUARY" + std::string(300, 'Y') + " 1992", Refused(typed::kDateFormat),
         "no such month"},
        {"5" + blanks + "JAN" + blanks + "1992" + blanks, typed::Date(5, 1, 1992), "blanks"},
        {zeros + "5 JAN 1992", typed::Date(5, 1, 1992), "leading zeros"},
        {"5 JAN " + zeros + "92", typed::Date(5, 1, 92), "302 characters are no short year"},
        {"5 JAN " + zeros, typed::Date(5, 1, 0), "300 characters are no short year"},
        {"5 JAN " + nines, typed::kDateRefused, "a year beyond every integer"},
        {nines + " JAN 1992", typed::kDateRefused, "a day beyond every integer"},
        {"5 JAN -" + nines, typed::kDateRefused, "a year beyond every integer"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(Note(row.text, row.rule));
        CheckDate(row.text, kFalse, row.expected);
        CheckDate(row.text, kTrue, row.expected);
    }
}

TEST(TypedTexts, ALongTimeIsReadByTheSameRules) {
    const std::string zeros(300, '0');
    CheckTime(std::string(300, ' '), typed::Time(0, 0, 0));
    CheckTime(std::string(300, ':') + "5", typed::Time(5, 0, 0));
    CheckTime(zeros, typed::Time(0, 0, 0));
    CheckTime(zeros + "5:" + zeros + "6", typed::Time(5, 6, 0));
    CheckTime("5" + std::string(300, ' ') + "PM", typed::Time(17, 0, 0));
    CheckTime(std::string(300, 'X'), typed::Refused(typed::kTimeNoDigit));
    CheckTime(Repeat("AM", 150), typed::Refused(typed::kTimeNoDigit));
    CheckTime(std::string(300, '\0'), typed::Refused(typed::kTimeNoDigit));
    CheckTime(std::string(300, '\xFF'), typed::Refused(typed::kTimeNoDigit));
    CheckTime(std::string(300, '9'), typed::kTimeRefused);
}

TEST(TypedTexts, EachFieldOfATimeBeyondTheThirdHasItsOwnBox) {
    Begin();
    std::int16_t hours = 0;
    std::int16_t minutes = 0;
    std::int16_t seconds = 0;
    std::int16_t errorFlag = 0;
    ParseTimeText(Repeat("1:", 150), hours, minutes, seconds, errorFlag);
    EXPECT_EQ(errorFlag, kTrue);
    EXPECT_EQ(TestShell().log, Lines(147, BoxLine(typed::kTimeTitle, typed::kTimeFourthField)));
}

TEST(TypedTexts, ALongCoordinateIsReadByTheSameRules) {
    const std::string zeros(300, '0');
    CheckLatitude(std::string(300, ' '), typed::Refused(typed::kLatitudeFormat));
    CheckLatitude(std::string(300, 'N'), typed::Refused(typed::kLatitudeFormat));
    CheckLatitude(std::string(300, '5'), typed::Refused(typed::kLatitudeFormat));
    CheckLatitude(std::string(300, '\0'), typed::Refused(typed::kLatitudeFormat));
    CheckLatitude(std::string(300, '-') + "35N", typed::North(35, 0, 0));
    CheckLatitude("N" + zeros + "35", typed::North(35, 0, 0));
    CheckLatitude("N" + zeros, typed::North(0, 0, 0));
    CheckLatitude("N" + std::string(300, '9'), typed::kCoordinateRefused);
    CheckLongitude(std::string(300, ' '), typed::Refused(typed::kLongitudeFormat));
    CheckLongitude(std::string(300, 'E'), typed::Refused(typed::kLongitudeFormat));
    CheckLongitude(std::string(300, '\xFF') + "E", typed::Refused(typed::kLongitudeFormat));
    CheckLongitude("138" + std::string(300, ' ') + "E" + zeros + "34", typed::East(138, 34, 0));
    CheckLongitude("W" + std::string(300, '9'), typed::kCoordinateRefused);
}

TEST(TypedTexts, ALongZoneIsReadByTheSameRules) {
    const std::string letters(300, 'X');
    CheckZone(std::string(300, ' '), kTrue, typed::Refused(typed::kZoneFormat));
    CheckZone(letters, kTrue, typed::Refused(typed::kZoneFormat));
    CheckZone(std::string(300, '\0'), kTrue, typed::Refused(typed::kZoneFormat));
    CheckZone(std::string(300, '\xFF'), kTrue, typed::Refused(typed::kZoneFormat));
    CheckZone(Repeat("1:", 150) + "1", kTrue, typed::Refused(typed::kZoneFormat));
    CheckZone(letters + " 9:00", kTrue, typed::ZoneWest(9, 0, 0, letters));
    CheckZone("GMT" + std::string(300, ' ') + "9", kTrue, typed::ZoneWest(0, 0, 0, "GMT"));
    CheckZone("-" + std::string(300, '0') + "9", kTrue, typed::ZoneEast(9, 0, 0, ""));
    CheckZone(std::string(300, '9'), kTrue, typed::kZoneRefused);
}

TEST(TypedTexts, ARowWithoutATimeIsAskedForInTheWordsOfABadRow) {
    Begin();
    FillZoneTable();
    float hours = kUntouched;
    std::string mnemonic;
    std::int16_t errorFlag = 0;
    ParseZoneText("SHORT", hours, mnemonic, errorFlag, kTrue);
    EXPECT_EQ(errorFlag, kTrue);
    ASSERT_EQ(TestShell().log.size(), 1U);
    const std::string start =
        BoxLine(typed::kZoneTitle,
                "The format of the Time Zone mnemonic has been recognised as valid,\r\n"
                "but the corresponding time value is not valid:");
    const std::size_t length = start.size() - std::string_view("|Ok|Error").size();
    EXPECT_EQ(TestShell().log[0].substr(0, length), start.substr(0, length));
}

TEST(TypedTexts, WithoutAZoneTableOnlyTimesAreKnown) {
    Begin();
    float hours = kUntouched;
    std::string mnemonic;
    std::int16_t errorFlag = 0;
    ParseZoneText("GMT", hours, mnemonic, errorFlag, kTrue);
    EXPECT_EQ(errorFlag, kTrue);
    EXPECT_EQ(TestShell().log, Lines{BoxLine(typed::kZoneTitle, typed::kZoneFormat.text)});
    ParseZoneText("GMT +9:00", hours, mnemonic, errorFlag, kTrue);
    EXPECT_EQ(errorFlag, kFalse);
    EXPECT_EQ(hours, 9);
    EXPECT_EQ(mnemonic, "GMT");
}

}  // namespace
}  // namespace orvantis
