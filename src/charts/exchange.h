// Exchange files: charts that a sibling program hands over, with its calculation, a note and
// attached events. The session's start reads them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "charts/KVCharts.h"
#include "charts/chart_lists.h"
#include "surface/values.h"
#include "text/bytes.h"

namespace orvantis {

/// Path of an exchange file of charts: "~K5", the number as five digits, ".CH~" if `temporary` is
/// set, otherwise the file of retained charts; in SystemDataPath.
std::string ChartExchangePath(std::int16_t number, Flag temporary);

/// The same of the older exchange: "~ST" and "retained.cha".
std::string OlderExchangePath(std::int16_t number, Flag temporary);

/// An exchange file of either generation.
struct ExchangeFilePath {
    std::string path;
    Flag older = kFalse;     ///< of the older exchange
    Flag temporary = kTrue;  ///< a chart handed over under its number; else the retained charts
};

/// The file through which charts come. Siblings of the versions 2 to 4 use the older exchange;
/// where there is no such file, and for all others, it is the newer one's.
ExchangeFilePath FindExchangeFile(std::int16_t number, Flag temporary);

/// A chart as an exchange file holds it.
struct ExchangeChart {
    FileChart chart;
    Bytes calculation;  ///< what follows the chart in its record; empty: not there, or not known
    std::string note;   ///< "" none
    std::vector<ChartAttachment> attachments;
};

/// Reads record `n`, from 1, of an exchange file, its note and its attachments. A temporary file of
/// one record serves any number, since a chart is also handed over alone under its number; of
/// retained charts it is the n-th. A file of the older exchange has one record, of which the chart
/// at its start is known and nothing else. False if the file isn't there or holds no such chart;
/// companions that are missing or damaged are passed over. No message.
bool ReadExchangeChart(const ExchangeFilePath& file, std::int32_t n, ExchangeChart& exchange);

/// Puts a chart into a slot, 1 or 2: its texts, codes, date and place, and the positions that were
/// calculated for it. They are calculated anew if the record doesn't hold them. What can't be a
/// position counts as not calculated. ChartNow is that of the chart's date and place. Returns
/// nonzero on failure, which the user has been told; slot and ChartNow are then no chart.
Flag ExchangeChartToSlot(const ExchangeChart& exchange, std::int16_t slot);

/// What belongs to the chart of a slot beyond its calculation.
struct ChartNotes {
    std::string note;
    std::vector<ChartAttachment> attachments;
};

/// Slot 1 the main chart, slot 2 the subsidiary one; element 0 stands unused.
extern std::array<ChartNotes, 3> chartNotes;

}  // namespace orvantis
