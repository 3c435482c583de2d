// The options of a call that say which lines of a chart it is about: those of the verbs "lines",
// "parans" and "render".
#pragma once

#include <array>
#include <string_view>

#include "cli/arguments.h"

namespace orvantis::cli {

/// Options that ApplyLineOptions takes; each has a value.
inline constexpr std::array<std::string_view, 5> kLineOptions = {"--types", "--mode", "--geodetic",
                                                                 "--paran-point", "--limit"};

/// What the call says of lines takes the place of the settings' and of the options'. False if a
/// value is none, which has been told.
bool ApplyLineOptions(const Arguments& call);

/// The latitude of --limit alone.
bool ApplyLimit(const Arguments& call);

/// The list of --points takes the place of the point selection.
bool ApplyPoints(const Arguments& call);

}  // namespace orvantis::cli
