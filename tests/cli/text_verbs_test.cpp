// The verbs "parse" and "format" as a user calls them.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

#include "support/paths.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

using Json = nlohmann::json;
using Words = std::vector<std::string>;

const std::string kProgram = ProgramFile("orvantis-cli");

class TextVerbs : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { home_ = new TempFolder; }
    static void TearDownTestSuite() {
        delete home_;
        home_ = nullptr;
    }

    static Words Environment() {
        return {"XDG_DATA_HOME=" + home_->Path(), "XDG_CONFIG_HOME=" + home_->Path()};
    }
    static ProgramResult Run(const Words& arguments) {
        return RunProgram(kProgram, arguments, Environment());
    }
    // Runs with a file as standard input.
    static ProgramResult RunOn(const std::string& arguments, std::string_view input) {
        const std::string path = home_->Write("input.txt", input);
        return RunProgram("sh", {"-c", "'" + kProgram + "' " + arguments + " < '" + path + "'"},
                          Environment());
    }
    static std::vector<Json> Rows(const ProgramResult& result) {
        std::vector<Json> rows;
        std::istringstream lines(result.output);
        for (std::string line; std::getline(lines, line);) rows.push_back(Json::parse(line));
        return rows;
    }

    static TempFolder* home_;
};

TempFolder* TextVerbs::home_ = nullptr;

struct CallRow {
    Words arguments;
    std::string output;  // whole
};

void ExpectOutput(const ProgramResult& result, const std::string& output) {
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, output);
}

TEST_F(TextVerbs, ParseGivesOneRowATextWithItsValues) {
    const std::vector<CallRow> rows = {
        {{"parse", "date", "31 dec 1992", "15 Mar 44 BC"},
         R"({"text":"31 dec 1992","error":0,"values":[31,12,1992],"formatted":"31 Dec 1992","messages":[]}
{"text":"15 Mar 44 BC","error":0,"values":[15,3,-43],"formatted":"15 Mar 0044 BC","messages":[]}
)"},
        {{"parse", "date", "1/2/1992"},
         R"({"text":"1/2/1992","error":0,"values":[1,2,1992],"formatted":"1 Feb 1992","messages":[]}
)"},
        {{"parse", "date", "--month-first", "1/2/1992"},
         R"({"text":"1/2/1992","error":0,"values":[2,1,1992],"formatted":"Jan 2 1992","messages":[]}
)"},
        {{"parse", "time", "23:59:07", "noon"},
         R"({"text":"23:59:07","error":0,"values":[23,59,7],"formatted":"11:59:07 PM","messages":[]}
{"text":"noon","error":0,"values":[12,0,0],"formatted":"12:00 PM","messages":[]}
)"},
        {{"parse", "time", "11.45 pm", "--clock24"},
         R"({"text":"11.45 pm","error":0,"values":[23,45,0],"formatted":"23:45","messages":[]}
)"},
        {{"parse", "latitude", "35S30", "0S0"},
         R"({"text":"35S30","error":0,"values":[-35.5],"formatted":"35S30","messages":[]}
{"text":"0S0","error":0,"values":[0],"formatted":"00N00","messages":[]}
)"},
        {{"parse", "longitude", "138e30", "75W00 36"},
         R"({"text":"138e30","error":0,"values":[138.5],"formatted":"138E30","messages":[]}
{"text":"75W00 36","error":0,"values":[-75.01],"formatted":"075W00 36","messages":[]}
)"},
        {{"parse", "zone", "-10:30", "xyz +9:00"},
         R"({"text":"-10:30","error":0,"values":[-10.5,""],"formatted":"-10:30","messages":[]}
{"text":"xyz +9:00","error":0,"values":[9,"XYZ"],"formatted":"XYZ +9:00","messages":[]}
)"},
        // The zone table that the program comes with.
        {{"parse", "zone", "est", "ACST +9:00"},
         R"({"text":"est","error":0,"values":[5,"EST"],"formatted":"EST +5:00","messages":[]}
{"text":"ACST +9:00","error":0,"values":[-9.5,"ACST"],"formatted":"ACST -9:30","messages":[]}
)"},
    };
    for (const CallRow& row : rows) ExpectOutput(Run(row.arguments), row.output);
}

TEST_F(TextVerbs, MnemonicsAreThoseOfTheShippedZoneFile) {
    ExpectOutput(
        Run({"parse", "zone", "GMT", "est", "EST rubbish"}),
        R"({"text":"GMT","error":0,"values":[0,"GMT"],"formatted":"GMT +0:00","messages":[]}
{"text":"est","error":0,"values":[5,"EST"],"formatted":"EST +5:00","messages":[]}
{"text":"EST rubbish","error":0,"values":[5,"EST"],"formatted":"EST +5:00","messages":[]}
)");
}

TEST_F(TextVerbs, WordsOfHelpBehindTwoDashesAreTexts) {
    ExpectOutput(
        Run({"parse", "time", "--clock24", "--", "--help", "-h"}),
        R"({"text":"--help","error":-1,"values":[],"formatted":"","messages":[{"title":"Error in Time","text":"The format of the time is not recognised.\r\nPlease use numbers separated by colons e.g. 11:45 PM"}]}
{"text":"-h","error":-1,"values":[],"formatted":"","messages":[{"title":"Error in Time","text":"The format of the time is not recognised.\r\nPlease use numbers separated by colons e.g. 11:45 PM"}]}
)");
    const ProgramResult before = Run({"parse", "time", "-h", "--", "1:00"});
    EXPECT_EQ(before.exitCode, 0);
    EXPECT_TRUE(before.output.starts_with("orvantis-cli parse "));
}

TEST_F(TextVerbs, ATextOfMoreThan1000BytesEndsTheWorkWithExitCode3) {
    const std::string longest = "1:00" + std::string(996, ' ');
    const std::string firstRow =
        R"({"text":"2:00","error":0,"values":[2,0,0],"formatted":"2:00 AM","messages":[]})"
        "\n";
    EXPECT_EQ(Rows(Run({"parse", "time", longest})).at(0)["error"], 0);
    for (const std::string& text : {longest + " ", std::string(100000, ':')}) {
        for (const Words& call :
             {Words{"parse", "time", "2:00", text}, Words{"format", "time", "2,0,0", text}}) {
            const ProgramResult result = Run(call);
            EXPECT_EQ(result.exitCode, 3);
            EXPECT_EQ(result.errors, "orvantis-cli: text 2: too long, 1000 bytes at most\n");
            if (call[0] == "parse") {
                EXPECT_EQ(result.output, firstRow);
            }
        }
    }
}

TEST_F(TextVerbs, ALineOfMoreThan1000BytesEndsTheWorkWithExitCode3) {
    const std::string longest = "1:00" + std::string(996, ' ');
    for (const std::string end : {"\n", "\r\n", ""}) {
        std::string input = "2:00\n";
        input.append(longest).append(end);
        const ProgramResult result = RunOn("parse time -", input);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.errors, "");
        ASSERT_EQ(Rows(result).size(), 2U);
        EXPECT_EQ(Rows(result)[1]["text"], longest);
        EXPECT_EQ(Rows(result)[1]["error"], 0);
    }
    for (const std::string end : {"\n", "\r\n", ""}) {
        for (const std::size_t more : {1U, 2U, 3U, 1000000U}) {
            std::string input = "2:00\n";
            input.append(longest).append(more, ' ').append(end).append("3:00");
            const ProgramResult result = RunOn("parse time -", input);
            EXPECT_EQ(result.exitCode, 3);
            EXPECT_EQ(result.errors,
                      "orvantis-cli: line 2 of standard input: too long, 1000 bytes at most\n");
            EXPECT_EQ(Rows(result).size(), 1U);
        }
    }
}

TEST_F(TextVerbs, AZeroByteInALineBelongsToItsText) {
    const std::vector<Json> rows =
        Rows(RunOn("parse time -", std::string_view("1:00\0\n2:00", 10)));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]["text"], std::string("1:00\0", 5));
    EXPECT_EQ(rows[0]["error"], -1);
    EXPECT_EQ(rows[1]["error"], 0);
}

TEST_F(TextVerbs, ARefusedTextHasItsBoxesInTheRowAndNoneOnStandardError) {
    ExpectOutput(
        Run({"parse", "date", "12/31/1992"}),
        R"({"text":"12/31/1992","error":-1,"values":[],"formatted":"","messages":[{"title":"Error in Date","text":"This date is not a valid calendar date.\r\nPlease re-enter a valid date e.g.\r\n31 Dec 1992  or  31/12/1992"}]}
)");
    ExpectOutput(
        Run({"parse", "time", "24:60"}),
        R"({"text":"24:60","error":-1,"values":[],"formatted":"","messages":[{"title":"Error in Time","text":"The format of the time is not recognised.\r\nHours must be in the range 0 to 23.\r\nPlease use a valid format e.g. 23:59:59"},{"title":"Error in Time","text":"The format of the time is not recognised.\r\nMinutes must be in the range 0 to 59.\r\nPlease use a valid format e.g. 11:59:59 PM"}]}
)");
    for (const char* kind : {"latitude", "longitude", "zone"}) {
        const ProgramResult result = Run({"parse", kind, "nowhere"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.errors, "");
        ASSERT_EQ(Rows(result).size(), 1U);
        EXPECT_EQ(Rows(result)[0]["error"], -1);
        EXPECT_EQ(Rows(result)[0]["messages"].size(), 1U);
    }
}

TEST_F(TextVerbs, FormatWritesTheValuesOfARow) {
    const std::vector<CallRow> rows = {
        {{"format", "date", "31,12,1992", "15 3 -43"},
         R"({"text":"31,12,1992","error":0,"values":[31,12,1992],"formatted":"31 Dec 1992","messages":[]}
{"text":"15 3 -43","error":0,"values":[15,3,-43],"formatted":"15 Mar 0044 BC","messages":[]}
)"},
        {{"format", "date", "--month-first", "31, 12, 1992"},
         R"({"text":"31, 12, 1992","error":0,"values":[31,12,1992],"formatted":"Dec 31 1992","messages":[]}
)"},
        {{"format", "time", "23,59,7"},
         R"({"text":"23,59,7","error":0,"values":[23,59,7],"formatted":"11:59:07 PM","messages":[]}
)"},
        {{"format", "time", "--clock24", "0,5,0"},
         R"({"text":"0,5,0","error":0,"values":[0,5,0],"formatted":"00:05","messages":[]}
)"},
        {{"format", "latitude", "-33.8667", "+7.5"},
         R"({"text":"-33.8667","error":0,"values":[-33.8667],"formatted":"33S52","messages":[]}
{"text":"+7.5","error":0,"values":[7.5],"formatted":"07N30","messages":[]}
)"},
        {{"format", "longitude", "138.5", "0"},
         R"({"text":"138.5","error":0,"values":[138.5],"formatted":"138E30","messages":[]}
{"text":"0","error":0,"values":[0],"formatted":"000W00","messages":[]}
)"},
        {{"format", "zone", "-9.5", "5,EST"},
         R"({"text":"-9.5","error":0,"values":[-9.5,""],"formatted":"-9:30","messages":[]}
{"text":"5,EST","error":0,"values":[5,"EST"],"formatted":"EST +5:00","messages":[]}
)"},
        // The hours end at the first comma or blank; any further comma is the mnemonic's.
        {{"format", "zone", "5 EST", " 5, EST ", "9,A,B", "9,,X", "5,"},
         R"({"text":"5 EST","error":0,"values":[5,"EST"],"formatted":"EST +5:00","messages":[]}
{"text":" 5, EST ","error":0,"values":[5,"EST"],"formatted":"EST +5:00","messages":[]}
{"text":"9,A,B","error":0,"values":[9,"A,B"],"formatted":"A,B +9:00","messages":[]}
{"text":"9,,X","error":0,"values":[9,",X"],"formatted":",X +9:00","messages":[]}
{"text":"5,","error":0,"values":[5,""],"formatted":"+5:00","messages":[]}
)"},
        {{"format", "angle", "123.5"},
         R"({"text":"123.5","error":0,"values":[123.5],"formatted":"123 30","messages":[]}
)"},
        {{"format", "angle", "--style", "1", "123.5"},
         R"({"text":"123.5","error":0,"values":[123.5],"formatted":"03Le30","messages":[]}
)"},
        {{"format", "angle", "--digits", "3", "--symbols", "--force-seconds", "--plus", "10.25"},
         R"({"text":"10.25","error":0,"values":[10.25],"formatted":"+010°15'00\"","messages":[]}
)"},
        {{"format", "angle", "--digits", "-1", "--style", "1", "123.5"},
         R"({"text":"123.5","error":0,"values":[123.5],"formatted":"Le30","messages":[]}
)"},
        {{"format", "angle", "--minutes", "--", "-10.25"},
         R"({"text":"-10.25","error":0,"values":[-10.25],"formatted":"-10 15","messages":[]}
)"},
    };
    for (const CallRow& row : rows) ExpectOutput(Run(row.arguments), row.output);
}

TEST_F(TextVerbs, AValueThatCannotBeReadHasNoText) {
    const std::vector<Words> calls = {
        {"format", "date", "", "31,12", "31,12,1992,5", "a,b,c", "31,12,40000", "1.5,1,1992"},
        {"format", "time", "23,59", "x"},
        {"format", "latitude", "", "35S55", "1,2", "1e999", "1e300", "nan", "+-5"},
        {"format", "longitude", "east", "1e300"},
        {"format", "zone", "", "EST", ",EST", "1,2 3", "5 EST x", "1e300", "99999"},
        {"format", "angle", "", "x", "1e300"},
    };
    for (const Words& call : calls) {
        const ProgramResult result = Run(call);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.errors, "");
        const std::vector<Json> rows = Rows(result);
        ASSERT_EQ(rows.size(), call.size() - 2);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Json expected = {{"text", call[i + 2]},
                                   {"error", -1},
                                   {"values", Json::array()},
                                   {"formatted", ""},
                                   {"messages", Json::array()}};
            EXPECT_EQ(rows[i], expected);
        }
    }
}

TEST_F(TextVerbs, TheValuesOfAParsedRowAreFormattedToItsText) {
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"date", "31 Dec 1992"},    {"time", "11:59:07 PM"},   {"latitude", "35S55 12"},
        {"longitude", "138E34 10"}, {"zone", "XYZ -10:30:15"}, {"zone", "A,B +9:00"},
        {"zone", ",X +9:00"}};
    for (const auto& [kind, text] : texts) {
        const Json row = Rows(Run({"parse", kind, text})).at(0);
        EXPECT_EQ(row["formatted"], text);
        std::string values;
        for (const Json& value : row["values"]) {
            if (!values.empty()) values += ',';
            values += value.is_string() ? value.get<std::string>() : value.dump();
        }
        const Json back = Rows(Run({"format", kind, values})).at(0);
        EXPECT_EQ(back["formatted"], text);
        EXPECT_EQ(back["values"], row["values"]);
    }
}

TEST_F(TextVerbs, ADashReadsTextsFromStandardInputOneALine) {
    const ProgramResult result = RunOn("parse time 1:00 - 3:00", "noon\r\n\n2:00\n25:00");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    const std::vector<Json> rows = Rows(result);
    const std::vector<std::string> texts = {"1:00", "noon", "", "2:00", "25:00", "3:00"};
    ASSERT_EQ(rows.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(rows[i]["text"], texts[i]);
        EXPECT_EQ(rows[i]["error"], texts[i] == "25:00" ? -1 : 0);
    }
    ExpectOutput(RunOn("format date -", ""), "");
}

TEST_F(TextVerbs, TensOfThousandsOfTextsComeBackInTheirOrder) {
    std::string input;
    for (int n = 0; n < 30000; ++n)
        input += std::to_string(n % 90) + "N" + std::to_string(n % 61) + "\n";
    const ProgramResult result = RunOn("parse latitude -", input);
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<Json> rows = Rows(result);
    ASSERT_EQ(rows.size(), 30000U);
    for (int n = 0; n < 30000; ++n) {
        const Json& row = rows[static_cast<std::size_t>(n)];
        ASSERT_EQ(row["error"], n % 61 == 60 ? -1 : 0) << n;
        if (n % 61 != 60) {
            ASSERT_EQ(row["values"][0], n % 90 + n % 61 / 60.0);
        }
    }
}

TEST_F(TextVerbs, TextsOfAnyBytesGiveRowsOfProperJson) {
    const Words texts = {"\"quoted\\\"", "tab\there",  "\x01\x02\x7F",        "1 J\u00E4n 1992",
                         "\u65E5\u672C", "\U0001F600", std::string(1000, 'x')};
    Words call = {"parse", "date"};
    call.insert(call.end(), texts.begin(), texts.end());
    const ProgramResult result = Run(call);
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<Json> rows = Rows(result);
    ASSERT_EQ(rows.size(), texts.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i]["text"], texts[i]);
        EXPECT_EQ(rows[i]["error"], -1);
    }
    // What is no UTF-8 becomes the replacement character.
    const std::vector<Json> broken = Rows(Run({"parse", "zone", "\xFF\xC3 5"}));
    ASSERT_EQ(broken.size(), 1U);
    EXPECT_EQ(broken[0]["text"], "\uFFFD\uFFFD 5");
    EXPECT_EQ(broken[0]["values"], (Json{5, "??"}));
}

TEST_F(TextVerbs, AWrongCallIsToldInOneLineWithExitCode2) {
    const std::vector<std::pair<Words, std::string>> calls = {
        {{"parse"}, "parse: date, time, latitude, longitude or zone is needed"},
        {{"parse", "colour", "red"}, "colour: date, time, latitude, longitude or zone is needed"},
        {{"parse", "angle", "5"}, "angle: date, time, latitude, longitude or zone is needed"},
        {{"parse", "date"}, "parse: takes a kind and at least one text"},
        {{"parse", "date", "--year-first", "1"}, "--year-first: unknown option"},
        {{"format"}, "format: date, time, latitude, longitude, zone or angle is needed"},
        {{"format", "hour", "5"}, "hour: date, time, latitude, longitude, zone or angle is needed"},
        {{"format", "angle"}, "format: takes a kind and at least one text"},
        {{"format", "angle", "--style", "3", "5"},
         "--style 3: 0 (plain), 1 (letters of the sign) or 2 (glyph) is needed"},
        {{"format", "angle", "--digits", "x", "5"}, "--digits x: a number of figures is needed"},
        {{"format", "angle", "--digits", "-32769", "5"},
         "--digits -32769: a number of figures is needed"},
        {{"format", "angle", "--style", "-1", "5"},
         "--style -1: 0 (plain), 1 (letters of the sign) or 2 (glyph) is needed"},
        {{"format", "angle", "5", "--digits"}, "--digits: needs a value"},
        {{"format", "time", "--plus", "1,2,3"}, "time: takes no option of angles"},
    };
    for (const auto& [arguments, complaint] : calls) {
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2) << complaint;
        EXPECT_EQ(result.errors, "orvantis-cli: " + complaint + "\n");
        EXPECT_EQ(result.output, "");
    }
}

TEST_F(TextVerbs, HelpShowsAnExampleAndTheSignsOfTheValues) {
    for (const char* verb : {"parse", "format"}) {
        const ProgramResult result = Run({verb, "--help"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_NE(result.output.find("Example: orvantis-cli " + std::string(verb)),
                  std::string::npos);
        EXPECT_NE(result.output.find("EAST positive"), std::string::npos);
    }
    const ProgramResult main = Run({"--help"});
    EXPECT_NE(main.output.find("parse KIND TEXT"), std::string::npos);
    EXPECT_NE(main.output.find("format KIND VALUE"), std::string::npos);
}

}  // namespace
}  // namespace orvantis
