// Exchange files. See exchange.h.
#include "charts/exchange.h"

#include <algorithm>
#include <cmath>

#include "charts/CALCCHRT.h"
#include "charts/comments.h"
#include "session/session_state.h"
#include "text/byte_reader.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {

std::array<ChartNotes, 3> chartNotes;

namespace {

// A record of the newer exchange has 3171 bytes. Behind the chart stands its calculation, in the
// order of CalcChart's fields. What has no field there isn't known and isn't taken.
//
//   offset  size  field
//        0   292  the chart (see KVCharts_records.cpp)
//      292     6  Zodiac, Frame, HouseSystem, signed 16-bit each
//      298     8  JulianDayET, 64-bit float
//      306     4  Cusp1AtAscendant, Cusp10AtMidheaven, signed 16-bit each
//      310    96  Cusp, 12 64-bit floats
//      406     2  signed, not taken
//      408    80  text, not taken
//      488  1152  Lon, Lat, Dist, LonSpeed, each 36 64-bit floats
//     1640   288  Dec, RA, each 36 32-bit floats
//     1928    72  Retro, 36 signed 16-bit
//     2000   288  SortLon, 36 64-bit floats
//     2288   144  SortOrder, Shown, each 36 signed 16-bit
//     2432    48  12 32-bit floats, not taken
//     2480   288  36 64-bit floats, not taken
//     2768    72  36 signed 16-bit, not taken
//     2840     2  signed, not taken
//     2842    56  7 64-bit floats, not taken
//     2898     4  2 signed 16-bit, not taken
//     2902     4  position of the note in the note file, signed, counted from 1
//     2906     4  length of the note, signed; below 1 none
//     2910     2  signed, not taken
//     2912   255  text, not taken
//     3167     4  signed, not taken
constexpr std::int64_t kRecordSize = 3171;
constexpr std::size_t kPoints = 36;
constexpr std::size_t kHouses = 12;

// Offsets in the calculation, which starts behind the chart.
constexpr std::size_t kZodiac = 0;
constexpr std::size_t kFrame = 2;
constexpr std::size_t kHouseSystem = 4;
constexpr std::size_t kJulianDay = 6;
constexpr std::size_t kCusp1Flag = 14;
constexpr std::size_t kCusp10Flag = 16;
constexpr std::size_t kCusps = 18;
constexpr std::size_t kLon = 196;
constexpr std::size_t kLat = kLon + kPoints * 8;
constexpr std::size_t kDist = kLat + kPoints * 8;
constexpr std::size_t kLonSpeed = kDist + kPoints * 8;
constexpr std::size_t kDec = kLonSpeed + kPoints * 8;
constexpr std::size_t kRA = kDec + kPoints * 4;
constexpr std::size_t kRetro = kRA + kPoints * 4;
constexpr std::size_t kSortLon = kRetro + kPoints * 2;
constexpr std::size_t kSortOrder = kSortLon + kPoints * 8;
constexpr std::size_t kShown = kSortOrder + kPoints * 2;
constexpr std::size_t kNotePosition = 2610;
constexpr std::size_t kNoteLength = 2614;
constexpr std::size_t kCalculationSize = kRecordSize - kFileChartSize;
static_assert(kDec + kFileChartSize == 1640 && kRetro + kFileChartSize == 1928);
static_assert(kShown + kPoints * 2 + kFileChartSize == 2432 && kNoteLength + 292 == 2906);

// The companions of an exchange file have its name with the last character but one replaced: "M"
// the notes, "E" the attachments.
//
// Note file: texts, found by position and length. A line's end is two bytes 1.
//
// Attachment file:
//
//   offset  size  field
//        0     4  count of blocks, signed; block n belongs to record n
//        4        the blocks, one after the other, each:
//           4     count of attachments, signed; each of them:
//             115 the event
//               4 length of the note, signed; below 1 none
//                 the note
constexpr std::int64_t kLeastBlock = 4;
constexpr std::int64_t kLeastAttachment = kChartEventSize + 4;

constexpr std::uint8_t kFirstNewer = 5;  // version of the sibling that has the newer exchange

std::string NumberedPath(std::string_view start, std::int16_t number) {
    return session.SystemDataPath + std::string(start) + ZeroPadded(number, 5) + ".CH~";
}

std::string CompanionPath(std::string path, char kind) {
    if (path.size() >= 2) path[path.size() - 2] = kind;
    return path;
}

// Number of the record that holds chart `n`, 0 for none. The last record may lack its end.
std::int64_t RecordOf(const ExchangeFilePath& file, std::int64_t length, std::int64_t n) {
    const std::int64_t records = file.older != 0 ? 1 : (length + kRecordSize - 1) / kRecordSize;
    if (records == 1 && file.temporary != 0) return 1;
    return n >= 1 && n <= records ? n : 0;
}

// The bytes of a note; fewer, if the note file ends before it does.
std::string ReadNote(const std::string& path, const Bytes& calculation) {
    const std::int64_t position = GetI32(&calculation[kNotePosition]);
    const std::int64_t length = GetI32(&calculation[kNoteLength]);
    if (position < 1 || length < 1 || FileExists(path) == 0) return "";
    const FileHandle file = FileOpener(path, open_mode::kBinary, 0, kFalse);
    const std::int64_t left = FileLength(file) - (position - 1);
    const std::int64_t there = std::clamp<std::int64_t>(std::min(length, left), 0, kMostChartBytes);
    Bytes bytes(static_cast<std::size_t>(there));
    const std::size_t read = ReadWhatIsThere(file, position, bytes);
    CloseFile(file);
    return WithLineEnds(GetText(bytes.data(), read));
}

std::vector<ChartAttachment> TakeAttachments(ByteReader& reader) {
    std::vector<ChartAttachment> attachments;
    const std::int32_t count = reader.TakeCount(kLeastAttachment);
    for (std::int32_t i = 0; i < count && !reader.failed; ++i) {
        const std::uint8_t* event = reader.Take(kChartEventSize);
        if (event == nullptr) break;
        attachments.push_back({GetChartEvent(event), reader.TakeText()});
    }
    return attachments;
}

// Those of record `n`; none of a block that is damaged.
std::vector<ChartAttachment> ReadAttachments(const std::string& path, std::int64_t n) {
    Bytes bytes;
    if (FileExists(path) == 0 || FetchFile(path, kMostChartBytes, bytes) != 0) return {};
    ByteReader reader{bytes};
    if (reader.TakeCount(kLeastBlock) < n) return {};
    std::vector<ChartAttachment> attachments;
    for (std::int64_t block = 1; block <= n && !reader.failed; ++block) {
        attachments = TakeAttachments(reader);
    }
    if (reader.failed) return {};
    return attachments;
}

// The chart and what of its calculation is there. `record`, the chart's number, becomes that of its
// record.
bool ReadRecord(const ExchangeFilePath& file, std::int64_t& record, ExchangeChart& exchange) {
    if (FileExists(file.path) == 0) return false;
    const FileHandle handle = FileOpener(file.path, open_mode::kRecords, kRecordSize, kFalse);
    record = RecordOf(file, FileLength(handle), record);
    Bytes bytes(static_cast<std::size_t>(file.older != 0 ? kFileChartSize : kRecordSize));
    std::size_t read = 0;
    if (record >= 1) read = ReadWhatIsThere(handle, (record - 1) * kRecordSize + 1, bytes);
    CloseFile(handle);
    if (read < kFileChartSize) return false;

    exchange.chart = GetFileChart(bytes.data());
    const std::int16_t type = ClampChartType(exchange.chart.chartType);
    const std::int16_t subType = ClampChartSubType(exchange.chart.chartSubType);
    exchange.chart.chartType = static_cast<std::uint8_t>(type);
    exchange.chart.chartSubType = static_cast<std::uint8_t>(subType);
    if (read == kRecordSize)
        exchange.calculation.assign(bytes.begin() + kFileChartSize, bytes.end());
    return true;
}

bool IsBetween(double value, double low, double high) {
    return value >= low && value <= high;  // false for what isn't a number
}

bool IsLongitude(double value) {
    return value >= 0 && value < 360;
}

// A record whose codes don't exist holds no calculation.
bool IsCalculated(const Bytes& calculation) {
    if (calculation.size() < kCalculationSize) return false;
    const double julianDay = GetF64(&calculation[kJulianDay]);
    return IsBetween(GetI16(&calculation[kZodiac]), zodiac::kTropical, zodiac::kUserSVP) &&
           IsBetween(GetI16(&calculation[kFrame]), 1, 2) &&
           IsBetween(GetI16(&calculation[kHouseSystem]), 0, house_system::kEqual) &&
           julianDay != 0 && IsBetween(julianDay, kFirstJD, kLastJD);
}

// One point. Values that can't be those of a position make it one that isn't calculated. The speed
// in latitude isn't handed over.
void TakePoint(const Bytes& from, std::size_t n, CalcChart& chart) {
    const std::size_t at = n - 1;
    chart.Lon[n] = GetF64(&from[kLon + at * 8]);
    chart.Lat[n] = GetF64(&from[kLat + at * 8]);
    chart.Dist[n] = GetF64(&from[kDist + at * 8]);
    chart.LonSpeed[n] = GetF64(&from[kLonSpeed + at * 8]);
    chart.LatSpeed[n] = 0;
    chart.Dec[n] = GetF32(&from[kDec + at * 4]);
    chart.RA[n] = GetF32(&from[kRA + at * 4]);
    chart.Retro[n] = GetI16(&from[kRetro + at * 2]) != 0 ? kTrue : kFalse;
    chart.SortLon[n] = GetF64(&from[kSortLon + at * 8]);
    chart.SortOrder[n] = GetI16(&from[kSortOrder + at * 2]);
    chart.Shown[n] = GetI16(&from[kShown + at * 2]) != 0 ? std::int16_t{1} : std::int16_t{0};

    const bool sound = IsLongitude(chart.Lon[n]) && IsBetween(chart.Lat[n], -90, 90) &&
                       std::isfinite(chart.Dist[n]) && std::isfinite(chart.LonSpeed[n]) &&
                       IsBetween(chart.Dec[n], -90, 90) && IsBetween(chart.RA[n], 0, 360);
    if (!sound) {
        chart.Lon[n] = -1;
        chart.Lat[n] = chart.Dist[n] = chart.LonSpeed[n] = 0;
        chart.Dec[n] = chart.RA[n] = 0;
        chart.Retro[n] = kTrue;
    }
    if (!sound || !IsLongitude(chart.SortLon[n])) chart.SortLon[n] = chart.Lon[n];
    if (!IsBetween(chart.SortOrder[n], 1, kPoints)) {
        chart.SortOrder[n] = static_cast<std::int16_t>(n);
    }
}

// The whole calculation into a chart whose texts, moment and place are there.
void TakeCalculation(const Bytes& from, std::int16_t slot) {
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    chart.Zodiac = GetI16(&from[kZodiac]);
    chart.Frame = GetI16(&from[kFrame]);
    chart.HouseSystem = GetI16(&from[kHouseSystem]);
    chart.JulianDayET = GetF64(&from[kJulianDay]);
    chartNow.ZodiacOffsetNow = Ayanamsa(chart.Zodiac, JulianCenturies(chart.JulianDayET));
    for (std::size_t n = 1; n <= kPoints; ++n) TakePoint(from, n, chart);
    std::fill(chart.Lon.begin() + kPoints + 1, chart.Lon.end(), -1.0);

    chart.Cusp1AtAscendant = GetI16(&from[kCusp1Flag]) != 0 ? kTrue : kFalse;
    chart.Cusp10AtMidheaven = GetI16(&from[kCusp10Flag]) != 0 ? kTrue : kFalse;
    bool sound = true;
    for (std::size_t house = 1; house <= kHouses; ++house) {
        chart.Cusp[house] = GetF64(&from[kCusps + (house - 1) * 8]);
        sound = sound && IsLongitude(chart.Cusp[house]);
    }
    if (sound) return;
    // Every chart has cusps. Those of its own angles, or of the place's where these are missing.
    if (chart.Lon[point::kAscendant] < 0 || chart.Lon[point::kMidheaven] < 0) {
        CalcAngles(slot, chartNow.RAMCNow, chartNow.ObliquityNow, chartNow.PlaceLat,
                   chartNow.ZodiacOffsetNow, kFalse);
        CalcEquatorial(slot, chartNow.ObliquityNow, chartNow.ZodiacOffsetNow);
    }
    CalcHouses(slot, chartNow.RAMCNow, chartNow.ObliquityNow, chartNow.PlaceLat,
               chartNow.ZodiacOffsetNow, chart.HouseSystem);
}

Flag FillSlot(const ExchangeChart& exchange, std::int16_t slot) {
    RunTimeError stale;
    TakeRunTimeError(stale);  // what stood before belongs to others
    Format1Record record;
    ChartToFormat1(exchange.chart, record);
    if (!IsCalculated(exchange.calculation)) return FileChartToCalcChart(record, slot, kFalse);
    if (BeginCalcChart(record, slot) != 0) return kTrue;
    TakeCalculation(exchange.calculation, slot);
    return kFalse;
}

}  // namespace

std::string ChartExchangePath(std::int16_t number, Flag temporary) {
    return temporary != 0 ? NumberedPath("~K5", number) : session.SystemDataPath + "retain5.cha";
}

std::string OlderExchangePath(std::int16_t number, Flag temporary) {
    return temporary != 0 ? NumberedPath("~ST", number) : session.SystemDataPath + "retained.cha";
}

ExchangeFilePath FindExchangeFile(std::int16_t number, Flag temporary) {
    const bool older = session.SiblingVersion != 0 && session.SiblingVersion < kFirstNewer;
    std::string path = OlderExchangePath(number, temporary);
    if (older && FileExists(path) != 0) return {std::move(path), kTrue, temporary};
    return {ChartExchangePath(number, temporary), kFalse, temporary};
}

bool ReadExchangeChart(const ExchangeFilePath& file, std::int32_t n, ExchangeChart& exchange) {
    ExchangeChart read;
    std::int64_t record = n;
    if (!ReadRecord(file, record, read)) return false;
    if (!read.calculation.empty()) {
        read.note = ReadNote(CompanionPath(file.path, 'M'), read.calculation);
    }
    if (file.older == 0) read.attachments = ReadAttachments(CompanionPath(file.path, 'E'), record);
    exchange = std::move(read);
    return true;
}

Flag ExchangeChartToSlot(const ExchangeChart& exchange, std::int16_t slot) {
    if (slot < 1 || slot > 2) {
        RaiseRunTimeError(error::kSubscript);
        return kTrue;
    }
    const auto i = static_cast<std::size_t>(slot);
    calcChart[i] = {};
    chartNotes[i] = {};
    if (FillSlot(exchange, slot) != 0) {
        calcChart[i] = {};
        calcChart[i].Lon.fill(-1);
        return kTrue;
    }
    calcChart[i].Name2 = Trim(exchange.chart.event2.name).substr(0, 30);
    chartNotes[i] = {exchange.note, exchange.attachments};
    return kFalse;
}

}  // namespace orvantis
