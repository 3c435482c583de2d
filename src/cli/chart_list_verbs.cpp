// The verbs "charts" and "convert": chart files as a whole.
#include <iostream>
#include <nlohmann/json.hpp>

#include "charts/KVCharts.h"
#include "charts/chart_lists.h"
#include "charts/comments.h"
#include "cli/chart_losses.h"
#include "cli/verbs.h"
#include "session/files.h"
#include "text/code_page.h"
#include "text/dates.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis::cli {

using Json = nlohmann::ordered_json;

namespace {

// Most comment text that is listed, in bytes: in a damaged file every chart may lead into the same
// ring of blocks.
constexpr std::size_t kMostCommentText = std::size_t{256} * 1024 * 1024;

// The heads of chart files in bytes: the description alone, or behind a version.
constexpr std::int64_t kDescriptionSize = 80;
constexpr std::int64_t kHeadSize = 2 + kDescriptionSize;

// ---- charts ----

// A moment and its place. Degrees; longitude east positive.
Json EventJson(const ChartEvent& event) {
    const std::string date = FormatDateText(event.day, event.month, event.year);
    const std::string time = FormatTimeText(event.hour, event.minute, event.second);
    return {{"name", ToUtf8(Trim(event.name))},
            {"date", ToUtf8(date)},
            {"time", ToUtf8(time)},
            {"zone", event.zoneHours},
            {"zoneName", ToUtf8(Trim(event.zoneName))},
            {"place", ToUtf8(Trim(event.place))},
            {"country", ToUtf8(Trim(event.country))},
            {"latitude", event.latitude},
            {"longitude", 0.0F - event.longitude}};
}

Json ListedChart(std::int32_t number, const StoredChart& stored) {
    Json listed = {{"number", number}};
    listed.update(EventJson(stored.chart.event));
    listed["comment"] = ToUtf8(stored.comment);
    Json attachments = Json::array();
    for (const ChartAttachment& attachment : stored.attachments) {
        Json event = EventJson(attachment.event);
        event["note"] = ToUtf8(attachment.note);
        attachments.push_back(std::move(event));
    }
    listed["attachments"] = std::move(attachments);
    return listed;
}

std::string EventLine(const Json& event) {
    const auto text = [&event](const char* field) {
        return PlainText(event[field].get<std::string>());
    };
    return text("name") + ", " + text("date") + ", " + text("time") + " " + text("zoneName") +
           ", " + text("place") + ", " + text("country") + "\n";
}

// A text of any number of lines, set in under its chart.
void PrintSetIn(std::string_view text, std::string_view margin) {
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        const std::string_view line = text.substr(0, end);
        if (!Trim(line).empty()) std::cout << margin << PlainText(line) << "\n";
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

void PrintListedChart(const Json& chart) {
    std::cout << chart["number"].get<int>() << "  " << EventLine(chart);
    PrintSetIn(chart["comment"].get<std::string>(), "     ");
    for (const Json& attachment : chart["attachments"]) {
        std::cout << "   + " << EventLine(attachment);
        PrintSetIn(attachment["note"].get<std::string>(), "       ");
    }
}

// True if the length of a file says that it is one of that type: a head alone is a chart file
// without charts, and so is a file of no bytes, which counts as the oldest type; less than a head
// or a chart is none.
bool HasCharts(std::int16_t type, std::int32_t count, std::int64_t length) {
    if (count > 0 || type == chart_file::kFormat3) return true;
    if (type == chart_file::kFormat0) return length == 0;
    return length >= (type == chart_file::kBlocks ? kDescriptionSize : kHeadSize);
}

// A chart file that is being listed, and what couldn't be read of it so far.
struct Listing {
    std::string path;
    std::int16_t type = 0;
    FileHandle file = 0;
    std::int32_t count = 0;
    Bytes comments;               // the comment file of types 1 and 2
    std::string commentFailure;   // why comments are missing or may be, "" they aren't
    bool commentsNeeded = false;  // a chart has a comment
    std::size_t commentText = 0;  // bytes of comments so far
    std::string failure;          // why charts behind the ones that were read are missing
};

// Takes the pending run-time error that ended a file behind so many charts.
std::string WhyMissing(std::int32_t charts) {
    RunTimeError reason;
    TakeRunTimeError(reason);
    return "what is behind chart " + std::to_string(charts) + " can't be read (" +
           reason.description + ")";
}

const char* const kDoubtful = "is damaged, or no comment file: comments may be missing or wrong";

std::string CommentsUnread(std::int16_t failure) {
    return "the comments can't be read (" + RunTimeErrorText(failure) + ")";
}

// Reads the comment file of a chart file. Returns why comments of its charts are missing, or may
// be; "" they aren't, unless a chart leads to one behind the end.
std::string FetchComments(const std::string& chartPath, std::int16_t type, Bytes& comments) {
    if (!KeepsComments(type)) return "";
    if (CommentPath(chartPath) == chartPath)
        return "a file of this name has no comment file: comments are missing";
    std::string place;
    const std::int16_t failure = FetchStandingComments(chartPath, comments, place);
    if (failure != 0) return CommentsUnread(failure);
    if (IsCommentFile(place)) return "";
    return kDoubtful;
}

// Opens the file and reads its comments; both again where a save has put others in their place
// meanwhile. False if it can't be opened.
bool OpenListing(Listing& listing) {
    for (int left = kMostReadings; left > 0; --left) {
        std::optional<FolderLock> alone;
        if (left == 1) alone.emplace(listing.path);
        if (listing.file > 0) CloseChartFile(listing.type, listing.file);
        listing.file = OpenChartFile(listing.path, listing.count, kFalse);
        if (listing.file < 1) return false;
        listing.type = currentChartFileType;
        listing.comments.clear();
        listing.commentFailure = FetchComments(listing.path, listing.type, listing.comments);
        if (!KeepsComments(listing.type) || IsFileOf(listing.file, listing.path)) break;
    }
    return true;
}

// True if that reference to a comment leads behind the end of the comments.
bool LeadsOut(std::int32_t ref, const Bytes& comments) {
    return LeadsToComment(ref) && ref > CommentBlocks(comments);
}

// The chart with what belongs to it; false if its record can't be read.
bool ReadListed(Listing& listing, std::int32_t n, StoredChart& stored) {
    if (listing.type == chart_file::kFormat3) {
        stored = OpenChartListOf(listing.file)->charts[static_cast<std::size_t>(n) - 1];
        return true;
    }
    if (!ReadChart(listing.type, listing.file, n, stored.chart)) {
        listing.failure = WhyMissing(n - 1);
        return false;
    }
    listing.commentsNeeded = listing.commentsNeeded || LeadsToComment(stored.chart.commentRef);
    if (listing.commentFailure.empty() && LeadsOut(stored.chart.commentRef, listing.comments)) {
        listing.commentFailure = kDoubtful;
    }
    stored.comment = GetComment(listing.comments, stored.chart.commentRef);
    listing.commentText += stored.comment.size();
    if (listing.commentText > kMostCommentText) {
        stored.comment.clear();
        listing.comments.clear();
        listing.commentFailure = CommentsUnread(error::kFileTooLarge);
    }
    return true;
}

// Writes the charts of an open file one by one, as they are read: a file may hold any number. What
// can't be read is told at the end.
int ListCharts(Listing& listing, bool json) {
    bool first = true;
    if (json) std::cout << "{\n  \"type\": " << listing.type << ",\n  \"charts\": [";
    for (std::int32_t n = 1; n <= listing.count && std::cout; ++n) {
        StoredChart stored;
        if (!ReadListed(listing, n, stored)) break;
        const Json listed = ListedChart(n, stored);
        if (json) {
            std::cout << (first ? "\n    " : ",\n    ") << listed.dump();
        } else {
            PrintListedChart(listed);
        }
        first = false;
    }
    if (json) std::cout << "\n  ]\n}\n";
    if (!std::cout) return kDone;
    int exitCode = kDone;
    if (listing.commentsNeeded && !listing.commentFailure.empty()) {
        exitCode = Complain(kUnreadable, CommentPath(listing.path), listing.commentFailure);
    }
    if (listing.failure.empty()) return exitCode;
    return Complain(kUnreadable, listing.path, listing.failure);
}

// ---- convert ----

// Why the comments of a list that is to be a file of that type can't have their name, or those of
// the file that it replaces can't go to the backup; kDone if they can. What is wrong has been told.
int RefuseComments(const std::string& out, std::int16_t type, const ChartList& list) {
    const CommentObstacle obstacle = FindCommentObstacle(out, type, list);
    if (obstacle.path.empty()) return kDone;
    const char* const verb = IsMissing(obstacle.path) ? "would be" : "is";
    std::string why = verb + (" the comment file of " + obstacle.sharer) + " too";
    if (obstacle.sharer.empty()) {
        why = "is there already, and is the name of the comment file of " +
              NativePath(obstacle.chart);
    } else if (obstacle.sharer.ends_with('/')) {
        why = "may be another chart file's too: " + obstacle.sharer + " can't be listed";
    }
    return Complain(kWorkFailed, NativePath(obstacle.path), why);
}

// Why a file of that type can't have that name; kDone if it can. What is wrong has been told.
int RefuseName(const std::string& out, std::int16_t type) {
    if (!HasExtension(out)) {
        return Complain(kWrongCall, out, "the name of a chart file has an extension");
    }
    if (KeepsComments(type) && CommentPath(out) == out) {
        return Complain(kWrongCall, out, "files of this name are of type 3 alone");
    }
    return kDone;
}

// Tells why a file can't be read, the comments' file if it is that one.
int TellUnreadable(const std::string& path, std::int16_t type, const CliShell& shell) {
    const std::string commentPath = CommentPath(path);
    Bytes comments;
    const std::string why = FetchComments(path, type, comments);
    const bool unread =
        !why.empty() && comments.empty() && commentPath != path && MayHoldComments(commentPath);
    return unread ? Complain(kUnreadable, commentPath, why) : UnreadableChartFile(path, shell);
}

// Tells of comments that may be missing in a list that was read all the same. Returns an exit code.
int TellDoubtfulComments(const std::string& path, std::int16_t type) {
    Bytes comments;
    std::string why = FetchComments(path, type, comments);
    const std::int32_t highest = HighestCommentRef(path);
    if (why.empty() && LeadsOut(highest, comments)) why = kDoubtful;
    if (why.empty() || highest == 0) return kDone;
    return Complain(kUnreadable, CommentPath(path), why);
}

// Reads a whole file. Returns an exit code; what is wrong has been told.
int LoadForConversion(const std::string& path, ChartList& list, CliShell& shell) {
    std::int16_t type = 0;
    std::int32_t count = 0;
    const FileHandle file = OpenStoredCharts(path, type, count, kFalse);
    if (file == 0) return UnreadableChartFile(path, shell);
    const bool hasCharts = HasCharts(type, count, FileLength(file));
    CloseFile(file);
    if (type == chart_file::kBlocks) {
        return Complain(kUnreadable, path, "this kind of chart file isn't read");
    }
    if (!hasCharts) return Complain(kUnreadable, path, "holds no charts");
    return LoadChartList(path, list, kFalse) ? kDone : TellUnreadable(path, type, shell);
}

// Reads the new file again and tells what is missing in it, after the comments that were cut.
int TellLosses(const std::string& out, std::int16_t type, const ChartList& before,
               const ChartLoss& cut) {
    ChartList after;
    if (!LoadChartList(out, after, kFalse) || after.charts.size() != before.charts.size()) {
        RunTimeError reason;
        TakeRunTimeError(reason);
        return Complain(kWorkFailed, out, "can't be read again (" + reason.description + ")");
    }
    std::vector<ChartLoss> losses = FindLosses(before, after);
    if (cut.charts != 0) losses.push_back(cut);
    for (const ChartLoss& loss : losses) {
        Complain(kDone, out,
                 "type " + std::to_string(type) + " can't hold " + std::string(loss.kind) +
                     ": lost in " + std::to_string(loss.charts) + " of " +
                     std::to_string(before.charts.size()) + " charts, the first " +
                     std::to_string(loss.first));
    }
    return kDone;
}

}  // namespace

const std::string_view kChartsHelp =
    R"(orvantis-cli charts FILE [--json]

Lists the charts in a chart file, each with its comment and its attached events. Latitude is north
positive, longitude EAST positive; "zone" is the hours that are added to the clock's time to reach
Universal Time.

Example: orvantis-cli charts data/sample.cht
)";

const std::string_view kConvertHelp =
    R"(orvantis-cli convert IN OUT --type 1|2|3

Writes the charts of a chart file of any type, with their comments, as a file of type 1 ("KVv3/4"),
2 ("KVv5") or 3 ("KVv6"). What the type can't hold is told, kind by kind, on standard error; the
exit code is 0 all the same. A file that OUT replaces stays beside it as OUT.bak; IN and OUT may be
one file. Files of types 1 and 2 keep comments in a file of the same name without the extension.
Of a damaged type 3 file the charts in front of the damage are written, with exit code 3.

Example: orvantis-cli convert data/sample.cht charts.ch6 --type 3
)";

int RunCharts(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call = TakeApart(words, {{}, {"--json"}});
    if (!call) return kWrongCall;
    if (call->words.size() != 1) return Complain(kWrongCall, "charts", "takes one FILE");
    Listing listing;
    listing.path = call->words.front();
    if (!OpenListing(listing)) return UnreadableChartFile(listing.path, shell);
    const bool damaged =
        listing.type == chart_file::kFormat3 && OpenChartListOf(listing.file)->damaged != 0;
    if (damaged) listing.failure = WhyMissing(listing.count);
    int exitCode = kUnreadable;
    if (HasCharts(listing.type, listing.count, FileLength(listing.file))) {
        exitCode = ListCharts(listing, call->Has("--json"));
    } else {
        Complain(kUnreadable, listing.path, "holds no charts");
    }
    CloseChartFile(listing.type, listing.file);
    return exitCode;
}

int RunConvert(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call = TakeApart(words, {{"--type"}, {}});
    if (!call) return kWrongCall;
    if (call->words.size() != 2 || !call->Value("--type")) {
        return Complain(kWrongCall, "convert", "takes IN, OUT and --type 1|2|3");
    }
    const std::optional<std::int32_t> number = ParseInteger(*call->Value("--type"));
    if (!number || *number < chart_file::kFormat1 || *number > chart_file::kFormat3) {
        return Complain(kWrongCall, "--type", "takes 1, 2 or 3");
    }
    const auto type = static_cast<std::int16_t>(*number);
    const std::string& in = call->words[0];
    const std::string& out = call->words[1];

    const int refused = RefuseName(out, type);
    if (refused != kDone) return refused;

    ChartList list;
    const int loaded = LoadForConversion(in, list, shell);
    if (loaded != kDone) return loaded;
    const int obstructed = RefuseComments(out, type, list);
    if (obstructed != kDone) return obstructed;
    int exitCode = TellDoubtfulComments(in, list.type);
    if (list.damaged != 0) {
        if (IsSameFile(in, out)) return UnreadableChartFile(in, shell);
        exitCode =
            Complain(kUnreadable, in, WhyMissing(static_cast<std::int32_t>(list.charts.size())));
    }
    const ChartLoss cut = CutComments(type, list);
    if (!SaveChartFile(out, type, list)) return kWorkFailed;
    const int told = TellLosses(out, type, list, cut);
    return told == kDone ? exitCode : told;
}

}  // namespace orvantis::cli
