#include "cli/cli_shell.h"

#include <ctime>
#include <iostream>

#include "cli/arguments.h"
#include "text/code_page.h"

namespace orvantis::cli {

namespace {

// The lines of a box as one: joined by ": ", or by a blank where a line ends in punctuation.
std::string OneLine(std::string_view text) {
    std::string joined;
    while (!text.empty()) {
        const std::size_t end = text.find("\r\n");
        const std::string_view line = text.substr(0, end);
        if (!line.empty()) {
            if (!joined.empty()) {
                const bool open = joined.back() != ':' && joined.back() != '.';
                joined += open ? ": " : " ";
            }
            joined += line;
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
    }
    return joined;
}

}  // namespace

BoxAnswer CliShell::MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                               BoxIcon icon) {
    complained = true;
    std::cerr << "orvantis-cli: ";
    if (!title.empty() && title != "Orvantis") std::cerr << ToUtf8(title) << ": ";
    std::cerr << PlainText(ToUtf8(OneLine(text))) << "\n";
    return NullShell::MessageBox(text, title, buttons, icon);
}

LocalTime CliShell::Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const auto field = [](int value) { return static_cast<std::int16_t>(value); };
    return {field(local.tm_year + 1900), field(local.tm_mon + 1), field(local.tm_mday),
            field(local.tm_hour),        field(local.tm_min),     field(local.tm_sec)};
}

}  // namespace orvantis::cli
