// The command "S&ave Chart...".
#pragma once

namespace orvantis {

/// Asks for a file and appends the chart on display to it. Asks first whether a chart that stands
/// in a file is to be saved once more. A name without an extension gets ".cht".
void SaveChart();

}  // namespace orvantis
