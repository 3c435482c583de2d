// What a chart file of another type has lost of its charts.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "charts/chart_lists.h"

namespace orvantis::cli {

/// One kind of thing that is lost.
struct ChartLoss {
    std::string_view kind;    ///< e.g. "attached events"
    std::int32_t charts = 0;  ///< number of charts that lost it
    std::int32_t first = 0;   ///< number of the first of them, from 1
};

/// Cuts the comments to what a type can hold, and tells what they lost by it.
ChartLoss CutComments(std::int16_t type, ChartList& list);

/// The kinds of things in which the charts of two lists of the same length differ.
std::vector<ChartLoss> FindLosses(const ChartList& before, const ChartList& after);

}  // namespace orvantis::cli
