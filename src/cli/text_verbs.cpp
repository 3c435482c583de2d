// The verbs "parse" and "format": typed dates, times, places and zones, there and back.
#include <array>
#include <iostream>

#include "cli/text_rows.h"
#include "cli/verbs.h"
#include "text/code_page.h"
#include "text/fields.h"
#include "text/run_time_error.h"
#include "text/text_state.h"

namespace orvantis::cli {

namespace {

// Rows are written in portions of this size.
constexpr std::size_t kPortion = 1 << 16;

constexpr std::string_view kStandardInput = "-";

// Most bytes of a text, far more than any that means something: a time shows a box for each of its
// wrong fields, and a line of any length would have to be held whole.
constexpr std::size_t kLongestText = 1000;

class RowWriter {
  public:
    ~RowWriter() { Flush(); }
    RowWriter() = default;
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

    std::string& Rows() { return rows_; }
    // False: nothing more can be written.
    bool EndRow() {
        if (rows_.size() >= kPortion) Flush();
        return static_cast<bool>(std::cout);
    }
    void Flush() {
        std::cout.write(rows_.data(), static_cast<std::streamsize>(rows_.size()));
        rows_.clear();
    }

  private:
    std::string rows_;
};

int ComplainOfLength(const std::string& which) {
    return Complain(kUnreadable, which,
                    "too long, " + std::to_string(kLongestText) + " bytes at most");
}

// Calls `row` with every line of standard input, until it returns false.
template <typename Row>
int ForEachLine(const Row& row) {
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    std::array<char, kLongestText + 2> buffer{};  // with "\r" and the end of the text
    for (std::size_t number = 1;; ++number) {
        std::cin.getline(buffer.data(), buffer.size());
        if (std::cin.bad()) return Complain(kUnreadable, "standard input", "can't be read");
        auto length = static_cast<std::size_t>(std::cin.gcount());
        if (std::cin.eof() && length == 0) return kDone;
        const bool whole = !std::cin.fail();
        if (whole && !std::cin.eof()) --length;  // the line's end, which has been taken too
        std::string_view line(buffer.data(), length);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!whole || line.size() > kLongestText) {
            return ComplainOfLength("line " + std::to_string(number) + " of standard input");
        }
        if (!row(line)) return kDone;
    }
}

// Calls `row` with every text of a call, and with every line of standard input where the text is
// "-". It returns false to end.
template <typename Row>
int ForEachText(const std::vector<std::string>& texts, const Row& row) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (texts[i] == kStandardInput) {
            const int exitCode = ForEachLine(row);
            if (exitCode != kDone) return exitCode;
            continue;
        }
        if (texts[i].size() > kLongestText) {
            return ComplainOfLength("text " + std::to_string(i + 1));
        }
        if (!row(texts[i])) return kDone;
    }
    return kDone;
}

// Both clocks and orders are the call's own choice, so that a script gives the same rows anywhere.
void SetRegionalChoices(const Arguments& call) {
    textState.MonthFirst = call.Has("--month-first") ? kTrue : kFalse;
    textState.Clock24 = call.Has("--clock24") ? kTrue : kFalse;
}

// The kind of a call, which has at least one text behind it; null, after a complaint, if it has
// none.
const TextKind* KindOf(const Arguments& call, std::string_view verb, std::string_view kinds) {
    const TextKind* kind = call.words.empty() ? nullptr : FindTextKind(call.words[0]);
    if (kind == nullptr || (verb == "parse" && kind->parse == nullptr)) {
        Complain(kWrongCall, call.words.empty() ? verb : call.words[0], kinds);
        return nullptr;
    }
    if (call.words.size() < 2) {
        Complain(kWrongCall, verb, "takes a kind and at least one text");
        return nullptr;
    }
    return kind;
}

// Runs `read` over the texts of a call and writes their rows. It gives the outcome of one text.
template <typename Read>
int WriteRows(const Arguments& call, CliShell& shell, const Read& read) {
    BoxKeeper keeper;
    textState.shell = &keeper;
    RunTimeError failure;
    TakeRunTimeError(failure);  // whatever the start has left
    int exitCode = kDone;
    {
        RowWriter writer;
        const std::vector<std::string> texts(call.words.begin() + 1, call.words.end());
        exitCode = ForEachText(texts, [&](std::string_view text) {
            keeper.boxes.clear();
            TextOutcome outcome = read(FromUtf8(text));
            // A value beyond every text.
            if (TakeRunTimeError(failure)) outcome = {};
            AppendRow(writer.Rows(), text, outcome, keeper.boxes);
            return writer.EndRow();
        });
    }
    textState.shell = &shell;
    return exitCode;
}

// Reads the options of angles. False, after a complaint, if one of them is wrong.
bool ReadAngleOptions(const Arguments& call, bool isAngle, AngleOptions& options) {
    for (const auto& [name, text] : call.values) {
        const std::optional<std::int32_t> number = ParseInteger(text);
        const bool style = name == "--style";
        std::int16_t narrow = 0;
        if (!number || !FitInt16(*number, narrow) || (style && (narrow < 0 || narrow > 2))) {
            Complain(kWrongCall, std::string(name).append(" ").append(text),
                     style ? "0 (plain), 1 (letters of the sign) or 2 (glyph) is needed"
                           : "a number of figures is needed");
            return false;
        }
        (style ? options.style : options.digits) = narrow;
    }
    options.symbols = call.Has("--symbols");
    options.minutesOnly = call.Has("--minutes");
    options.forceSeconds = call.Has("--force-seconds");
    options.plusSign = call.Has("--plus");
    const bool any = !call.values.empty() || options.symbols || options.minutesOnly ||
                     options.forceSeconds || options.plusSign;
    if (any && !isAngle) Complain(kWrongCall, call.words[0], "takes no option of angles");
    return isAngle || !any;
}

}  // namespace

const std::string_view kParseHelp =
    R"(orvantis-cli parse date|time|latitude|longitude|zone [--month-first] [--clock24] TEXT...

Tells what a typed text means, one row of JSON a text: "text", "error" (0 accepted, -1 refused),
"values", "formatted" (the value as the program writes it) and "messages" (the boxes that the program
shows, each with "title" and "text"). A refused text has no values; the exit code is 0 all the same.

"values" by kind:
  date       day, month, year (1 BC is 0, 44 BC is -43)
  time       hours, minutes, seconds
  latitude   degrees, north positive
  longitude  degrees, EAST positive
  zone       hours, WEST positive (clock time plus the zone is Universal Time), and the mnemonic

Dates are read day first unless --month-first is given, and times are written on the 12 hour clock
unless --clock24 is. A TEXT of - stands for standard input, one text a line. What follows a word --
is text, whatever it begins with. A text of more than 1000 bytes ends the work with exit code 3.

Example: orvantis-cli parse date "31 Dec 1992" 31/12/1992 "15 Mar 44 BC"
)";

const std::string_view kFormatHelp =
    R"(orvantis-cli format date|time|latitude|longitude|zone|angle [OPTIONS] VALUE...

Writes values as the program does, one row of JSON a value, like those of parse. A VALUE is the
"values" of such a row, joined by commas or blanks: 31,12,1992 or 23,59,7 or -33.8667; longitudes
are EAST positive, zones WEST positive and their mnemonic may be left out. One that can't be read has
"error" -1. A VALUE of - stands for standard input, one value a line. One of more than 1000 bytes ends
the work with exit code 3.

  --month-first    dates month first
  --clock24        times on the 24 hour clock
  for angles, in degrees:
  --style 0|1|2    plain, in a sign by its two letters, in a sign by its glyph (a byte of the glyph
                   font, shown as the character of code page 1252)
  --digits N       figures of the degrees, 1 to 3 (2); any other number shows no degrees
  --symbols        marks of degrees, minutes and seconds
  --minutes        no seconds
  --force-seconds  seconds also if they are 0
  --plus           a plus sign before what isn't negative

Example: orvantis-cli format angle --style 1 123.5
)";

int RunParse(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call =
        TakeApart(words, {{}, {"--month-first", "--clock24"}, {}, true});
    if (!call) return kWrongCall;
    const TextKind* kind =
        KindOf(*call, "parse", "date, time, latitude, longitude or zone is needed");
    if (kind == nullptr) return kWrongCall;
    SetRegionalChoices(*call);
    return WriteRows(*call, shell, [&](std::string_view text) { return kind->parse(text); });
}

int RunFormat(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call = TakeApart(
        words,
        {{"--style", "--digits"},
         {"--month-first", "--clock24", "--symbols", "--minutes", "--force-seconds", "--plus"},
         {},
         true});
    if (!call) return kWrongCall;
    const TextKind* kind =
        KindOf(*call, "format", "date, time, latitude, longitude, zone or angle is needed");
    if (kind == nullptr) return kWrongCall;
    AngleOptions options;
    if (!ReadAngleOptions(*call, kind->name == "angle", options)) return kWrongCall;
    SetRegionalChoices(*call);
    return WriteRows(*call, shell,
                     [&](std::string_view text) { return kind->format(text, options); });
}

}  // namespace orvantis::cli
