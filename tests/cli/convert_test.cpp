// "charts" and "convert" as a user calls them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

#include "charts/chart_lists.h"
#include "charts/comments.h"
#include "session/files.h"
#include "support/paths.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

using Json = nlohmann::json;

const std::string kProgram = ProgramFile("orvantis-cli");
const std::string kGolden = TestFile("charts/golden/");

// Comments of the golden files.
const std::string kLong = "This one has 29 characters.\r\n";
const std::string kShort = "Exactly 28 characters of it.";

class Convert : public ::testing::Test {
  protected:
    Convert() {
        // What a conversion has to leave alone is read from the copies.
        for (const char* name :
             {"type0.cht", "type1.cht", "type1", "type2.cht", "type2", "type3.ch6"}) {
            std::filesystem::copy_file(kGolden + name, folder_.File(name));
        }
    }

    ProgramResult Run(const std::vector<std::string>& arguments,
                      const std::string& program = kProgram) const {
        return RunProgram(program, arguments,
                          {"XDG_DATA_HOME=" + home_.Path(), "XDG_CONFIG_HOME=" + home_.Path()});
    }
    ProgramResult To(const std::string& in, const std::string& out, int type) const {
        return Run({"convert", in, out, "--type", std::to_string(type)});
    }
    std::string File(const std::string& name) const { return folder_.File(name); }

    static Bytes FileBytes(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    Json Listed(const std::string& path) const {
        const ProgramResult result = Run({"charts", path, "--json"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return Json::parse(result.output);
    }

    // A type 3 file of one chart with this comment.
    std::string WithComment(std::string_view name, const std::string& comment) const {
        ChartList list;
        list.charts.resize(1);
        list.charts[0].chart.event.name = "One";
        list.charts[0].comment = comment;
        EXPECT_TRUE(SaveChartFile(File(std::string(name)), 3, list));
        return File(std::string(name));
    }

    TempFolder folder_;
    TempFolder home_;
};

TEST_F(Convert, ChartsListsEveryTypeWithCommentsAndAttachments) {
    const struct {
        const char* name;
        int type;
        std::vector<std::string> comments;
    } rows[] = {{"type0.cht", 0, {"", ""}},
                {"type1.cht", 1, {kLong, kShort}},
                {"type2.cht", 2, {kShort, "", kLong}},
                {"type3.ch6", 3, {kLong, "", kShort}}};
    for (const auto& row : rows) {
        const Json list = Listed(File(row.name));
        EXPECT_EQ(list["type"], row.type);
        ASSERT_EQ(list["charts"].size(), row.comments.size()) << row.name;
        for (std::size_t i = 0; i < row.comments.size(); ++i) {
            EXPECT_EQ(list["charts"][i]["number"], i + 1);
            EXPECT_EQ(list["charts"][i]["comment"], row.comments[i]) << row.name << " " << i;
            EXPECT_EQ(list["charts"][i]["attachments"].empty(), row.type != 3 || i == 1);
        }
    }
    const Json attached = Listed(File("type3.ch6"))["charts"][0]["attachments"];
    ASSERT_EQ(attached.size(), 2U);
    EXPECT_EQ(attached[0]["name"], "Ides of March");
    EXPECT_EQ(attached[0]["place"], "Roma");
    EXPECT_EQ(attached[0]["longitude"], 12.5);
    EXPECT_EQ(attached[0]["note"], "A note,\r\nof two lines \xC3\x9F ");
    EXPECT_EQ(attached[1]["note"], "");
}

TEST_F(Convert, ChartsAsTextSetsCommentsAndAttachmentsInUnderTheirChart) {
    const std::string text = Run({"charts", File("type3.ch6")}).output;
    EXPECT_NE(text.find("\n     This one has 29 characters.\n   + Ides of March, "),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n       A note,\n       of two lines \xC3\x9F \n   + A name of"),
              std::string::npos)
        << text;
}

TEST_F(Convert, CommentsThatCannotBeReadAreToldAndTheChartsListed) {
    std::ofstream(File("type2")).put('x');
    std::filesystem::resize_file(File("type2"), kMostChartBytes + 1);
    const ProgramResult result = Run({"charts", File("type2.cht")});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors,
              "orvantis-cli: " + File("type2") + ": the comments can't be read (File too large)\n");
    EXPECT_EQ(result.output.substr(0, 13), "1  A name of ");
}

TEST_F(Convert, CommentsThatAreNotThereAreToldAndTheChartsListedAndConverted) {
    const Bytes sound = FileBytes(File("type2"));
    const std::string lost = "the comments can't be read (File not found)\n";
    const std::string cut = "is damaged, or no comment file: comments may be missing or wrong\n";
    for (const std::string& told : {lost, cut}) {
        std::filesystem::remove(File("type2"));
        if (told == cut) folder_.Write("type2", Bytes(32));  // the head alone
        const std::string errors = "orvantis-cli: " + File("type2") + ": " + told;
        const ProgramResult list = Run({"charts", File("type2.cht"), "--json"});
        EXPECT_EQ(list.exitCode, 3);
        EXPECT_EQ(list.errors, errors);
        EXPECT_EQ(Json::parse(list.output)["charts"][0]["comment"], "");
        const ProgramResult result = To(File("type2.cht"), File("out.ch6"), 3);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.errors, errors);
        EXPECT_EQ(Listed(File("out.ch6"))["charts"], Json::parse(list.output)["charts"]);
    }
    // In its own place too; and what leads to no comment is told of nothing.
    std::filesystem::remove(File("type2"));
    EXPECT_EQ(To(File("type2.cht"), File("type2.cht"), 2).exitCode, 3);
    EXPECT_EQ(Run({"charts", File("type2.cht")}).errors, "");
    // A file of type 2 whose name is that of a type 3 file.
    folder_.Write("type2", sound);
    std::filesystem::copy_file(File("type2.cht.bak"), File("type2.ch6"));
    EXPECT_EQ(Run({"charts", File("type2.ch6")}).errors,
              "orvantis-cli: " + File("type2.ch6") +
                  ": a file of this name has no comment file: comments are missing\n");
}

// A pipe stands for a file that may not be read: it isn't missing and can't be opened either.
TEST_F(Convert, ACommentFileThatCannotBeOpenedIsToldAndNothingIsWritten) {
    std::filesystem::remove(File("type2"));
    ASSERT_EQ(::mkfifo(File("type2").c_str(), 0600), 0);
    const std::string told = "orvantis-cli: " + File("type2") +
                             ": the comments can't be read (Path/File access error)\n";
    const ProgramResult list = Run({"charts", File("type2.cht")});
    EXPECT_EQ(list.exitCode, 3);
    EXPECT_EQ(list.errors, told);
    EXPECT_EQ(list.output.substr(0, 13), "1  A name of ");
    const ProgramResult result = To(File("type2.cht"), File("out.ch6"), 3);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, told);
    EXPECT_FALSE(std::filesystem::exists(File("out.ch6")));
}

TEST_F(Convert, WithoutCommentsAFileOfTheCommentFilesNameIsInNobodysWay) {
    const Bytes comments = FileBytes(File("type2"));
    for (const int type : {1, 2}) {
        const std::string out = File("type2.d" + std::to_string(type));
        const ProgramResult result = To(File("type0.cht"), out, type);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(Listed(out)["charts"], Listed(File("type0.cht"))["charts"]);
    }
    EXPECT_EQ(FileBytes(File("type2")), comments);
}

TEST_F(Convert, EveryTypeBecomesEveryOtherAndItsChartsStay) {
    for (const char* name : {"type0.cht", "type1.cht", "type2.cht", "type3.ch6"}) {
        const Json before = Listed(File(name))["charts"];
        const Bytes bytes = FileBytes(File(name));
        for (const int type : {1, 2, 3}) {
            const std::string out = File("out" + std::to_string(type) + ".cht");
            const ProgramResult result = To(File(name), out, type);
            ASSERT_EQ(result.exitCode, 0) << name << " " << type << " " << result.errors;
            EXPECT_EQ(result.output, "");
            const Json list = Listed(out);
            EXPECT_EQ(list["type"], type);
            ASSERT_EQ(list["charts"].size(), before.size());
            for (std::size_t i = 0; i < before.size(); ++i) {
                const Json& old = before[i];
                const Json& now = list["charts"][i];
                const auto longName = old["name"].get<std::string>();
                EXPECT_EQ(now["name"], type == 1 ? longName.substr(0, 30) : longName);
                for (const char* field : {"date", "time", "zone", "zoneName", "place", "country",
                                          "latitude", "longitude", "comment"}) {
                    EXPECT_EQ(now[field], old[field]) << name << " " << type << " " << field;
                }
                EXPECT_EQ(now["attachments"], type == 3 ? old["attachments"] : Json::array());
            }
        }
        EXPECT_EQ(FileBytes(File(name)), bytes) << "the file that was read is as it was";
    }
}

TEST_F(Convert, WhatTheTypeCannotHoldIsToldOnceAKind) {
    const std::string out = File("out.cht");
    const ProgramResult one = To(File("type3.ch6"), out, 1);
    EXPECT_EQ(one.exitCode, 0);
    std::string expected;
    for (const char* kind :
         {"names beyond 30 characters: lost in 1 of 3", "second moments and titles: lost in 1 of 3",
          "the two options of a chart: lost in 1 of 3", "reserved fields: lost in 1 of 3",
          "attached events: lost in 2 of 3"}) {
        expected.append("orvantis-cli: " + out + ": type 1 can't hold ")
            .append(kind)
            .append(" charts, the first 1\n");
    }
    EXPECT_EQ(one.errors, expected);
    EXPECT_EQ(To(File("type3.ch6"), out, 2).errors,
              "orvantis-cli: " + out +
                  ": type 2 can't hold attached events: lost in 2 of 3 charts, the first 1\n");
    EXPECT_EQ(To(File("type3.ch6"), out, 3).errors, "");
    EXPECT_EQ(To(File("type2.cht"), out, 3).errors, "");
    const std::string other = File("other.cht");
    EXPECT_EQ(To(File("type1.cht"), other, 1).errors, "") << "what it holds comes from this type";
    EXPECT_EQ(To(File("type0.cht"), other, 1).errors, "");
}

TEST_F(Convert, CoordinatesFinerThanASecondAreToldForType1) {
    ChartList list;
    list.charts.resize(3);
    list.charts[0].chart.event.longitude = -0.0F;
    list.charts[1].chart.event.latitude = static_cast<float>(51 + 28.0 / 60 + 0.5 / 3600);
    list.charts[2].chart.event.latitude = static_cast<float>(51 + 28.0 / 60 + 38.0 / 3600);
    ASSERT_TRUE(SaveChartFile(File("fine.cht"), 2, list));
    const std::string out = File("out.cht");
    EXPECT_EQ(To(File("fine.cht"), out, 1).errors,
              "orvantis-cli: " + out +
                  ": type 1 can't hold coordinates finer than a second: lost in 1 of 3 charts, the "
                  "first 2\n");
    EXPECT_EQ(To(File("fine.cht"), out, 2).errors, "");
}

TEST_F(Convert, ACommentThatIsTooLongIsCutAndToldInTypes1And2) {
    const std::string in = WithComment("long.ch6", std::string(kMostComment + 1, 'x'));
    for (const int type : {1, 2}) {
        const std::string out = File("out" + std::to_string(type) + ".cht");
        const ProgramResult result = To(in, out, type);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.errors, "orvantis-cli: " + out + ": type " + std::to_string(type) +
                                     " can't hold comments beyond 32200 characters: lost in 1 of 1 "
                                     "charts, the first 1\n");
        EXPECT_EQ(Listed(out)["charts"][0]["comment"], std::string(kMostComment, 'x'));
    }
    EXPECT_EQ(To(in, File("out3.cht"), 3).errors, "");
    EXPECT_EQ(To(WithComment("blank.ch6", "text  "), File("out4.cht"), 2).errors,
              "orvantis-cli: " + File("out4.cht") +
                  ": type 2 can't hold last blanks and end marks of comments: lost in 1 of 1 "
                  "charts, the first 1\n");
}

TEST_F(Convert, AFileMayTakeItsOwnPlaceAndTheOldOneIsKept) {
    const Bytes old = FileBytes(File("type2.cht"));
    const Bytes oldComments = FileBytes(File("type2"));
    const Json before = Listed(File("type2.cht"))["charts"];
    ASSERT_EQ(To(File("type2.cht"), File("type2.cht"), 1).exitCode, 0);
    EXPECT_EQ(FileBytes(File("type2.cht.bak")), old);
    EXPECT_EQ(FileBytes(File("type2.bak")), oldComments);
    const Json after = Listed(File("type2.cht"));
    EXPECT_EQ(after["type"], 1);
    EXPECT_EQ(after["charts"][0]["comment"], before[0]["comment"]);
    // A second time, and to a file that keeps comments in itself.
    ASSERT_EQ(To(File("type2.cht"), File("type2.cht"), 3).exitCode, 0);
    EXPECT_EQ(Listed(File("type2.cht"))["charts"][0]["comment"], before[0]["comment"]);
    EXPECT_EQ(FileBytes(File("type2.cht.bak")).size(), 110U * 4);
}

// What the conversion of a file in its own place leaves when the program is ended before its last
// move, and before the old charts have gone to the backup.
TEST_F(Convert, InItsOwnPlaceAfterOneThatWasBrokenOffAFileKeepsItsComments) {
    const Json before = Listed(File("type2.cht"))["charts"];
    const std::vector<std::pair<std::string, std::string>> moves[] = {
        {{"type2", "type2~"}}, {{"type2", "type2.bak"}, {"type3.ch6", "type2.cht~"}}};
    for (const auto& left : moves) {
        for (const auto& [from, to] : left) std::filesystem::rename(File(from), File(to));
        EXPECT_EQ(Listed(File("type2.cht"))["charts"], before);
        const ProgramResult result = To(File("type2.cht"), File("type2.cht"), 2);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(Listed(File("type2.cht"))["charts"], before);
        EXPECT_EQ(Listed(File("type2.cht.bak"))["charts"], before);
        std::filesystem::remove(File("type2.cht.bak"));
        std::filesystem::remove(File("type2.bak"));
    }
}

TEST_F(Convert, InItsOwnPlaceToType3AndBackAFileKeepsItsCommentsAndSoDoesItsBackup) {
    folder_.Write("type2.bak", Bytes(320));  // of an older save
    const Json before = Listed(File("type2.cht"))["charts"];
    const Bytes comments = FileBytes(File("type2"));
    const ProgramResult there = To(File("type2.cht"), File("type2.cht"), 3);
    EXPECT_EQ(there.exitCode, 0) << there.errors;
    EXPECT_FALSE(std::filesystem::exists(File("type2")));
    EXPECT_EQ(FileBytes(File("type2.bak")), comments);
    EXPECT_EQ(Listed(File("type2.cht.bak"))["charts"], before);
    const ProgramResult back = To(File("type2.cht"), File("type2.cht"), 2);
    EXPECT_EQ(back.exitCode, 0) << back.errors;
    EXPECT_EQ(Listed(File("type2.cht"))["charts"], before);
}

TEST_F(Convert, NoOtherFileIsReplacedByTheComments) {
    const Bytes comments = FileBytes(File("type2"));
    // The comment file would be that of the file that is read, or somebody else's.
    for (const char* in : {"type2.cht", "type3.ch6"}) {
        const ProgramResult result = To(File(in), File("type2.dat"), 1);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.errors, "orvantis-cli: " + File("type2") +
                                     ": is there already, and is the name of the comment file of " +
                                     File("type2.dat") + "\n");
    }
    EXPECT_FALSE(std::filesystem::exists(File("type2.dat")));
    std::filesystem::copy_file(File("type3.ch6"), File("type2.dat"));
    EXPECT_EQ(To(File("type2.cht"), File("type2.dat"), 2).exitCode, 1);
    EXPECT_EQ(FileBytes(File("type2.dat")), FileBytes(File("type3.ch6")));
    EXPECT_EQ(FileBytes(File("type2")), comments);
    // A file that replaces its like takes its comments' place too.
    EXPECT_EQ(To(File("type3.ch6"), File("type2.cht"), 2).exitCode, 0);
    EXPECT_EQ(FileBytes(File("type2.bak")), comments);
    // Type 3 has no comment file.
    EXPECT_EQ(To(File("type1.cht"), File("type1.dat"), 3).exitCode, 0);
}

TEST_F(Convert, WhatHasTheNameOfTheBackupOfTheCommentsAndIsNoneIsToldAndStays) {
    folder_.Write("type2.bak", "Notes of mine");
    const Bytes charts = FileBytes(File("type2.cht"));
    for (const int type : {1, 2, 3}) {
        const ProgramResult result = To(File("type3.ch6"), File("type2.cht"), type);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.errors, "orvantis-cli: " + File("type2.bak") +
                                     ": is there already, and is the name of the comment file of " +
                                     File("type2.cht.bak") + "\n");
    }
    EXPECT_EQ(FileBytes(File("type2.bak")).size(), 13U);
    EXPECT_EQ(FileBytes(File("type2.cht")), charts);
    // It may be another chart file's comments too.
    std::filesystem::copy_file(File("type2.cht"), File("type2.bak.cht"));
    std::filesystem::copy_file(File("type2"), File("type2.bak"),
                               std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(To(File("type3.ch6"), File("type2.cht"), 2).errors,
              "orvantis-cli: " + File("type2.bak") + ": is the comment file of " +
                  File("type2.bak.cht") + " too\n");
}

TEST_F(Convert, AFirstConversionWithoutCommentsTakesNothingFromASecondOneWithThem) {
    folder_.Write("notes", "Notes of mine");
    const std::string out = File("notes.cht");
    ASSERT_EQ(To(File("type0.cht"), out, 2).exitCode, 0);
    for (int i = 0; i < 2; ++i) {
        const ProgramResult result = To(File("type3.ch6"), out, 2);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.errors, "orvantis-cli: " + File("notes") +
                                     ": is there already, and is the name of the comment file of " +
                                     out + "\n");
    }
    EXPECT_EQ(FileBytes(File("notes")).size(), 13U);
}

TEST_F(Convert, DamagedCommentsAreToldAndTheRestIsListedAndConverted) {
    Bytes cut = FileBytes(File("type2"));
    cut.resize(cut.size() - 1);
    folder_.Write("type2", cut);
    const std::string told = "orvantis-cli: " + File("type2") +
                             ": is damaged, or no comment file: comments may be missing or wrong\n";
    const ProgramResult list = Run({"charts", File("type2.cht"), "--json"});
    EXPECT_EQ(list.exitCode, 3);
    EXPECT_EQ(list.errors, told);
    const Json charts = Json::parse(list.output)["charts"];
    const ProgramResult result = To(File("type2.cht"), File("out.ch6"), 3);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, told);
    EXPECT_EQ(Listed(File("out.ch6"))["charts"], charts);
    EXPECT_EQ(FileBytes(File("type2")), cut);
}

TEST_F(Convert, AWrongCallIsToldInOneLineWithExitCode2) {
    const std::string in = File("type2.cht");
    const std::string usage = "orvantis-cli: convert: takes IN, OUT and --type 1|2|3\n";
    const struct {
        std::vector<std::string> arguments;
        std::string errors;
    } rows[] = {{{}, usage},
                {{in, "out.cht"}, usage},
                {{in, "--type", "1"}, usage},
                {{in, "a.cht", "b.cht", "--type", "1"}, usage},
                {{in, "a.cht", "--type", "0"}, "orvantis-cli: --type: takes 1, 2 or 3\n"},
                {{in, "a.cht", "--type", "4"}, "orvantis-cli: --type: takes 1, 2 or 3\n"},
                {{in, "a.cht", "--type", "KVv5"}, "orvantis-cli: --type: takes 1, 2 or 3\n"},
                {{in, "a.cht", "--json"}, "orvantis-cli: --json: unknown option\n"},
                {{in, File("none"), "--type", "2"},
                 "orvantis-cli: " + File("none") + ": the name of a chart file has an extension\n"},
                {{in, File("a.ch6"), "--type", "2"},
                 "orvantis-cli: " + File("a.ch6") + ": files of this name are of type 3 alone\n"}};
    for (const auto& row : rows) {
        std::vector<std::string> arguments = {"convert"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2) << row.errors;
        EXPECT_EQ(result.errors, row.errors);
        EXPECT_EQ(result.output, "");
    }
}

TEST_F(Convert, AFileThatCannotBeReadIsToldInOneLineWithExitCode3AndNothingIsWritten) {
    const std::string out = File("out.cht");
    Bytes cut = FileBytes(File("type3.ch6"));
    cut.resize(86 + 299);  // within the first chart
    const struct {
        std::string in;
        std::string why;
    } rows[] = {
        {File("none.cht"), "File not found"},
        {folder_.Path(), "not a file that can be read"},
        {folder_.Write("short.cht", Bytes{2, 0, 1}), "holds no charts"},
        {folder_.Write("piece.cht", Bytes(114, 'x')), "holds no charts"},
        {folder_.Write("noext", std::string(400, 'x')), "this kind of chart file isn't read"},
        {folder_.Write("cut.ch6", cut), "can't be read (Input past end of file)"}};
    for (const auto& row : rows) {
        const ProgramResult result = To(row.in, out, 2);
        EXPECT_EQ(result.exitCode, 3) << row.in;
        EXPECT_EQ(result.errors, "orvantis-cli: " + row.in + ": " + row.why + "\n");
        EXPECT_FALSE(std::filesystem::exists(out));
    }
    const ProgramResult list = Run({"charts", File("cut.ch6")});
    EXPECT_EQ(list.exitCode, 3);
    EXPECT_EQ(list.errors,
              "orvantis-cli: " + File("cut.ch6") + ": can't be read (Input past end of file)\n");
}

TEST_F(Convert, FilesWithoutChartsBecomeFilesWithoutCharts) {
    Bytes head(82, ' ');
    PutI16(head.data(), 2);
    for (const std::string& in : {folder_.Write("head.cht", head), folder_.Write("no.cht", "")}) {
        for (const int type : {1, 2, 3}) {
            const ProgramResult result = To(in, File("out.cht"), type);
            EXPECT_EQ(result.exitCode, 0) << result.errors;
            EXPECT_EQ(Listed(File("out.cht"))["charts"].size(), 0U);
        }
    }
}

TEST_F(Convert, NumbersOutOfRangeOfTheOldestTypeAreReadAsTheyFall) {
    Bytes bad = FileBytes(File("type0.cht"));
    bad[89 + 1] = 0x7F;  // an hour that a byte can't hold
    folder_.Write("bad.cht", bad);
    const Json before = Listed(File("type0.cht"))["charts"];
    for (const int type : {1, 2, 3}) {
        const ProgramResult result = To(File("bad.cht"), File("out.cht"), type);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(Listed(File("out.cht"))["charts"], before) << "the low byte is the same";
    }
}

TEST_F(Convert, OfADamagedFileTheChartsBeforeTheDamageAreListedAndWritten) {
    const Json before = Listed(File("type3.ch6"))["charts"];
    Bytes cut = FileBytes(File("type3.ch6"));
    cut.pop_back();
    const std::string in = folder_.Write("cut.ch6", cut);
    const std::string told =
        "orvantis-cli: " + in + ": what is behind chart 2 can't be read (Input past end of file)\n";
    const ProgramResult list = Run({"charts", in, "--json"});
    EXPECT_EQ(list.exitCode, 3);
    EXPECT_EQ(list.errors, told);
    const Json charts = Json::parse(list.output)["charts"];
    ASSERT_EQ(charts.size(), 2U);
    EXPECT_EQ(charts[0], before[0]);
    EXPECT_EQ(charts[1], before[1]);

    const ProgramResult result = To(in, File("out.ch6"), 3);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, told);
    EXPECT_EQ(Listed(File("out.ch6"))["charts"], charts);
    EXPECT_EQ(Run({"chart", in + ":2"}).exitCode, 0);
    const ProgramResult third = Run({"chart", in + ":3"});
    EXPECT_EQ(third.exitCode, 3);
    EXPECT_EQ(third.errors,
              "orvantis-cli: " + in + ":3: the record can't be read (Input past end of file)\n");

    // It isn't written over, under whatever name.
    std::filesystem::create_symlink(in, File("link.ch6"));
    for (const std::string& out : {in, File("link.ch6")}) {
        const ProgramResult refused = To(in, out, 3);
        EXPECT_EQ(refused.exitCode, 3);
        EXPECT_EQ(refused.errors,
                  "orvantis-cli: " + in + ": can't be read (Input past end of file)\n");
    }
    EXPECT_EQ(FileBytes(in), cut);
    EXPECT_FALSE(std::filesystem::exists(in + ".bak"));
}

TEST_F(Convert, ACommentFileThatAnotherChartFileHasTooIsLeftAlone) {
    std::filesystem::copy_file(File("type2.cht"), File("type2.dat"));
    const Bytes comments = FileBytes(File("type2"));
    for (const char* in : {"type3.ch6", "type2.cht", "type2.dat"}) {
        for (const int type : {1, 2, 3}) {
            const ProgramResult result = To(File(in), File("type2.cht"), type);
            EXPECT_EQ(result.exitCode, 1) << in << " " << type;
            EXPECT_EQ(result.errors, "orvantis-cli: " + File("type2") +
                                         ": is the comment file of " + File("type2.dat") +
                                         " too\n");
        }
    }
    EXPECT_EQ(FileBytes(File("type2.cht")), FileBytes(File("type2.dat")));
    EXPECT_EQ(FileBytes(File("type2")), comments);
    // Neither a file without comments nor one of another type has them, and a backup its own.
    std::filesystem::remove(File("type2.dat"));
    std::filesystem::copy_file(File("type0.cht"), File("type2.old"));
    ChartList bare;
    bare.charts.resize(1);
    ASSERT_TRUE(SaveChartFile(File("bare.new"), 2, bare));
    std::filesystem::rename(File("bare.new"), File("type2.new"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(To(File("type3.ch6"), File("type2.cht"), 2).exitCode, 0) << i;
    }
}

// The list of the charts and that of the charts as they are read again.
TEST_F(Convert, ChartsWithoutTheirCommentFileDoNotGoBesideTheCommentsOfAnotherBackup) {
    ASSERT_EQ(To(File("type2.cht"), File("one.dat"), 2).exitCode, 0);
    ASSERT_EQ(To(File("one.dat"), File("one.dat"), 2).exitCode, 0);
    for (const char* name : {"one", "one.dat"}) std::filesystem::remove(File(name));
    std::filesystem::copy_file(File("type2.cht"), File("one.cht"));
    const Bytes charts = FileBytes(File("one.cht"));
    const ProgramResult result = To(File("type3.ch6"), File("one.cht"), 3);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "orvantis-cli: " + File("one.bak") + ": is the comment file of " +
                                 File("one.dat.bak") + " too\n");
    EXPECT_EQ(FileBytes(File("one.cht")), charts);
    EXPECT_FALSE(std::filesystem::exists(File("one.cht.bak")));
}

TEST_F(Convert, InAFolderThatCannotBeListedCommentsThatMayBeSharedAreLeftAlone) {
    const Bytes comments = FileBytes(File("type2"));
    std::vector<std::string> call = {kProgram,          "convert", File("type3.ch6"),
                                     File("type2.cht"), "--type",  "2"};
    // Whoever may do everything lists it all the same.
    const char* const plainly = "--bounding-set=-dac_override,-dac_read_search";
    if (::geteuid() == 0) call.insert(call.begin(), {"setpriv", plainly});
    using std::filesystem::perms;
    std::filesystem::permissions(folder_.Path(), perms::owner_write | perms::owner_exec);
    const ProgramResult result = Run({call.begin() + 1, call.end()}, call.front());
    std::filesystem::permissions(folder_.Path(), perms::owner_all);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "orvantis-cli: " + File("type2") +
                                 ": may be another chart file's too: " + folder_.Path() +
                                 " can't be listed\n");
    EXPECT_EQ(FileBytes(File("type2")), comments);
}

TEST_F(Convert, CommentsDoNotComeBesideAnotherChartFileThatHasLostItsOwn) {
    std::filesystem::remove(File("type2"));
    const ProgramResult result = To(File("type3.ch6"), File("type2.dat"), 2);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "orvantis-cli: " + File("type2") + ": would be the comment file of " +
                                 File("type2.cht") + " too\n");
    EXPECT_FALSE(std::filesystem::exists(File("type2")));
    EXPECT_FALSE(std::filesystem::exists(File("type2.dat")));
}

TEST_F(Convert, AHugeFileIsRefusedInLittleMemory) {
    const std::string in = folder_.Write("huge.cht", Bytes{1, 0});
    std::filesystem::resize_file(in, kMostChartBytes);
    const ProgramResult result = To(in, File("out.cht"), 2);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, "orvantis-cli: " + in + ": can't be read (File too large)\n");
#ifndef __SANITIZE_ADDRESS__  // the sanitizer keeps freed memory back
    EXPECT_LT(result.peakKilobytes, 60 * 1024);
#endif
}

TEST_F(Convert, AFileThatCannotBeWrittenIsToldWithExitCode1) {
    const std::string out = File("nowhere/out.cht");
    const ProgramResult result = To(File("type2.cht"), out, 3);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors,
              "orvantis-cli: Unable to save chart file: " + out + ": Error 76: Path not found\n");
    // A coordinate that type 1 has no room for.
    ChartList list;
    list.charts.resize(1);
    list.charts[0].chart.event.longitude = 300;
    ASSERT_TRUE(SaveChartFile(File("wide.cht"), 2, list));
    EXPECT_EQ(To(File("wide.cht"), File("wide1.cht"), 1).exitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(File("wide1.cht")));
}

}  // namespace
}  // namespace orvantis
