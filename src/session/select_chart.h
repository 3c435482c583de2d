// The choice of a chart from a chart file.
#pragma once

#include <string_view>

namespace orvantis {

/// Shows the charts of a file by name and date, and puts the chosen one on display, its lines drawn
/// anew. A file that can't be opened counts as one without charts.
void SelectChartFrom(std::string_view path);

/// The same of the chart file used last, or, if there is none, of one that is asked for.
void SelectChart();

/// Asks for a chart file first.
void OpenChartFileAndSelect();

}  // namespace orvantis
