// Chart records to and from their bytes. All numbers are little-endian; text is padded with blanks;
// fields follow one another without gaps. Text comes out without its trailing blanks.
#include <algorithm>
#include <cmath>

#include "charts/KVCharts.h"
#include "session/settings.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

namespace {

std::string GetField(const std::uint8_t* p, std::size_t width) {
    return std::string(TrimRight({reinterpret_cast<const char*>(p), width}));
}

// Offsets in a ChartEvent of 115 bytes.
//
//   offset  size  field
//        0    50  name
//       50    20  place
//       70    20  country
//       90     4  longitude, 32-bit float, degrees, west positive
//       94     4  latitude, 32-bit float, degrees, north positive
//       98     2  year, signed
//      100     1  month
//      101     1  day
//      102     3  hour, minute, second
//      105     4  zoneHours, 32-bit float
//      109     5  zoneName
//      114     1  reservedEvent
namespace chart_event {
constexpr std::size_t kName = 0;
constexpr std::size_t kNameWidth = 50;
constexpr std::size_t kPlace = 50;
constexpr std::size_t kPlaceWidth = 20;
constexpr std::size_t kCountry = 70;
constexpr std::size_t kLongitude = 90;
constexpr std::size_t kLatitude = 94;
constexpr std::size_t kYear = 98;
constexpr std::size_t kMonth = 100;
constexpr std::size_t kDay = 101;
constexpr std::size_t kHour = 102;
constexpr std::size_t kZoneHours = 105;
constexpr std::size_t kZoneName = 109;
constexpr std::size_t kZoneNameWidth = 5;
constexpr std::size_t kReservedEvent = 114;
static_assert(kReservedEvent + 1 == kChartEventSize);
}  // namespace chart_event

// Offsets in a FileChart of 292 bytes.
//
//   offset  size  field
//        0     1  chartType
//        1     1  chartSubType
//        2   115  event
//      117     1  reserved1
//      118     2  reserved2, text
//      120    30  reserved3, text
//      150     1  reserved4
//      151     1  houseCode
//      152     1  ayanamsaCode
//      153     4  ayanamsaValue, 32-bit float
//      157     1  recordForm
//      158     4  commentRef, signed
//      162   115  event2
//      277     2  extra1, signed
//      279     1  extra2
//      280     2  extraPair, two bytes
//      282     1  chartFlags
//      283     1  extra3
//      284     8  extra4, 64-bit float
namespace file_chart {
constexpr std::size_t kChartType = 0;
constexpr std::size_t kChartSubType = 1;
constexpr std::size_t kEvent = 2;
constexpr std::size_t kReserved1 = 117;
constexpr std::size_t kReserved2 = 118;
constexpr std::size_t kReserved2Width = 2;
constexpr std::size_t kReserved3 = 120;
constexpr std::size_t kReserved3Width = 30;
constexpr std::size_t kReserved4 = 150;
constexpr std::size_t kHouseCode = 151;
constexpr std::size_t kAyanamsaCode = 152;
constexpr std::size_t kAyanamsaValue = 153;
constexpr std::size_t kRecordForm = 157;
constexpr std::size_t kCommentRef = 158;
constexpr std::size_t kEvent2 = 162;
constexpr std::size_t kExtra1 = 277;
constexpr std::size_t kExtra2 = 279;
constexpr std::size_t kExtraPair = 280;
constexpr std::size_t kChartFlags = 282;
constexpr std::size_t kExtra3 = 283;
constexpr std::size_t kExtra4 = 284;
static_assert(kEvent + kChartEventSize == kReserved1);
static_assert(kEvent2 + kChartEventSize == kExtra1);
static_assert(kExtra4 + sizeof(double) == kFileChartSize);
}  // namespace file_chart

// Offsets in a format 1 record of 110 bytes.
//
//   offset  size  field
//        0     1  chartType
//        1     1  chartSubType
//        2     1  chartFlags
//        3     1  first of extraPair
//        4     1  extra3
//        5    30  name
//       35    20  place
//       55    20  country
//       75     4  zoneHours, 32-bit float
//       79     5  zoneName
//       84     1  day
//       85     1  month
//       86     2  year, signed
//       88     3  hour, minute, second
//       91     1  1 for longitude west, 0 for east
//       92     3  longitude degrees, minutes, seconds
//       95     1  1 for latitude north, 0 for south
//       96     3  latitude degrees, minutes, seconds
//       99     1  houseCode
//      100     1  ayanamsaCode
//      101     4  ayanamsaValue, 32-bit float
//      105     1  recordForm
//      106     4  commentRef, signed
namespace format1 {
constexpr std::size_t kChartType = 0;
constexpr std::size_t kChartSubType = 1;
constexpr std::size_t kChartFlags = 2;
constexpr std::size_t kExtraPair0 = 3;
constexpr std::size_t kExtra3 = 4;
constexpr std::size_t kName = 5;
constexpr std::size_t kNameWidth = 30;
constexpr std::size_t kPlace = 35;
constexpr std::size_t kPlaceWidth = 20;
constexpr std::size_t kCountry = 55;
constexpr std::size_t kZoneHours = 75;
constexpr std::size_t kZoneName = 79;
constexpr std::size_t kZoneNameWidth = 5;
constexpr std::size_t kDay = 84;
constexpr std::size_t kMonth = 85;
constexpr std::size_t kYear = 86;
constexpr std::size_t kHour = 88;
constexpr std::size_t kLongWest = 91;
constexpr std::size_t kLongDegrees = 92;
constexpr std::size_t kLatNorth = 95;
constexpr std::size_t kLatDegrees = 96;
constexpr std::size_t kHouseCode = 99;
constexpr std::size_t kAyanamsaCode = 100;
constexpr std::size_t kAyanamsaValue = 101;
constexpr std::size_t kRecordForm = 105;
constexpr std::size_t kCommentRef = 106;
static_assert(kCommentRef + sizeof(std::int32_t) == kFormat1Size);
}  // namespace format1

// Offsets in a format 0 record of 115 bytes. Numbers are signed 16-bit but for the zone.
//
//   offset  size  field
//        0    30  name
//       30     2  chartType
//       32     2  chartSubType
//       34    20  place
//       54    20  country
//       74     4  zoneHours, 32-bit float
//       78     5  zoneName
//       83     6  day, month, year
//       89     6  hour, minute, second
//       95     2  longitude degrees
//       97     2  longitude minutes, in the packed form minutes * 100 + seconds
//       99     2  nonzero for east
//      101     2  latitude degrees
//      103     2  latitude minutes, in the packed form minutes * 100 + seconds
//      105     2  -1 for north
//      107     2  houseCode
//      109     2  ayanamsaCode
//      111     2  reserved
//      113     2  coordinate form: 0 or below plain, 1 or above packed
namespace format0 {
constexpr std::size_t kName = 0;
constexpr std::size_t kNameWidth = 30;
constexpr std::size_t kChartType = 30;
constexpr std::size_t kChartSubType = 32;
constexpr std::size_t kPlace = 34;
constexpr std::size_t kPlaceWidth = 20;
constexpr std::size_t kCountry = 54;
constexpr std::size_t kZoneHours = 74;
constexpr std::size_t kZoneName = 78;
constexpr std::size_t kZoneNameWidth = 5;
constexpr std::size_t kDay = 83;
constexpr std::size_t kMonth = 85;
constexpr std::size_t kYear = 87;
constexpr std::size_t kHour = 89;
constexpr std::size_t kMinute = 91;
constexpr std::size_t kSecond = 93;
constexpr std::size_t kLongDegrees = 95;
constexpr std::size_t kLongMinutes = 97;
constexpr std::size_t kLongEast = 99;
constexpr std::size_t kLatDegrees = 101;
constexpr std::size_t kLatMinutes = 103;
constexpr std::size_t kLatNorth = 105;
constexpr std::size_t kHouseCode = 107;
constexpr std::size_t kAyanamsaCode = 109;
constexpr std::size_t kForm = 113;
static_assert(kForm + sizeof(std::int16_t) == kFormat0Size);
}  // namespace format0

// Hour, minute and second as three bytes.
void PutTime(std::uint8_t* p, std::uint8_t hour, std::uint8_t minute, std::uint8_t second) {
    p[0] = hour;
    p[1] = minute;
    p[2] = second;
}

// Whole degrees that go into a byte; what doesn't fit is an overflow.
std::uint8_t DegreeByte(std::int32_t degrees) {
    if (degrees >= 0 && degrees <= UINT8_MAX) return static_cast<std::uint8_t>(degrees);
    RaiseRunTimeError(error::kOverflow);
    return 0;
}

// A number of an old record as it falls into a byte. None fails: whatever bytes are there are read.
std::uint8_t LowByte(std::int16_t value) {
    return static_cast<std::uint8_t>(value & UINT8_MAX);
}

double Degrees(double degrees, double minutes, double seconds) {
    return degrees + (minutes + seconds / 60) / 60;
}

// Degrees of a format 0 coordinate, without its sign.
float Format0Degrees(std::int16_t degrees, std::int16_t minutes, bool packed) {
    const int wholeMinutes = packed ? minutes / 100 : minutes;
    const int seconds = packed ? minutes % 100 : 0;
    return static_cast<float>(Degrees(degrees, wholeMinutes, seconds));
}

struct SplitDegrees {
    std::int32_t degrees = 0;
    std::uint8_t minutes = 0;
    std::uint8_t seconds = 0;
};

// Whole degrees, minutes and seconds of the absolute value. The hundred thousandth of a degree
// (0.036 seconds) makes up for what a value lost when it was stored in 32 bits: at 180 degrees
// these are 0.0275 seconds apart, so at most 0.0138 is lost.
SplitDegrees Split(float value) {
    const double x = std::abs(static_cast<double>(value)) + 0.00001;
    const std::int32_t seconds = RoundToInt32(std::floor(x * 3600));
    return {seconds / 3600, static_cast<std::uint8_t>(seconds / 60 % 60),
            static_cast<std::uint8_t>(seconds % 60)};
}

}  // namespace

ChartEvent GetChartEvent(const std::uint8_t* p) {
    using namespace chart_event;
    ChartEvent event;
    event.name = GetField(p + kName, kNameWidth);
    event.place = GetField(p + kPlace, kPlaceWidth);
    event.country = GetField(p + kCountry, kPlaceWidth);
    event.longitude = GetF32(p + kLongitude);
    event.latitude = GetF32(p + kLatitude);
    event.year = GetI16(p + kYear);
    event.month = p[kMonth];
    event.day = p[kDay];
    event.hour = p[kHour];
    event.minute = p[kHour + 1];
    event.second = p[kHour + 2];
    event.zoneHours = GetF32(p + kZoneHours);
    event.zoneName = GetField(p + kZoneName, kZoneNameWidth);
    event.reservedEvent = p[kReservedEvent];
    return event;
}

void PutChartEvent(std::uint8_t* p, const ChartEvent& event) {
    using namespace chart_event;
    PutText(p + kName, kNameWidth, event.name);
    PutText(p + kPlace, kPlaceWidth, event.place);
    PutText(p + kCountry, kPlaceWidth, event.country);
    PutF32(p + kLongitude, event.longitude);
    PutF32(p + kLatitude, event.latitude);
    PutI16(p + kYear, event.year);
    p[kMonth] = event.month;
    p[kDay] = event.day;
    PutTime(p + kHour, event.hour, event.minute, event.second);
    PutF32(p + kZoneHours, event.zoneHours);
    PutText(p + kZoneName, kZoneNameWidth, event.zoneName);
    p[kReservedEvent] = event.reservedEvent;
}

FileChart GetFileChart(const std::uint8_t* p) {
    using namespace file_chart;
    FileChart chart;
    chart.chartType = p[kChartType];
    chart.chartSubType = p[kChartSubType];
    chart.event = GetChartEvent(p + kEvent);
    chart.reserved1 = p[kReserved1];
    chart.reserved2 = GetField(p + kReserved2, kReserved2Width);
    chart.reserved3 = GetField(p + kReserved3, kReserved3Width);
    chart.reserved4 = p[kReserved4];
    chart.houseCode = p[kHouseCode];
    chart.ayanamsaCode = p[kAyanamsaCode];
    chart.ayanamsaValue = GetF32(p + kAyanamsaValue);
    chart.recordForm = p[kRecordForm];
    chart.commentRef = GetI32(p + kCommentRef);
    chart.event2 = GetChartEvent(p + kEvent2);
    chart.extra1 = GetI16(p + kExtra1);
    chart.extra2 = p[kExtra2];
    chart.extraPair = {p[kExtraPair], p[kExtraPair + 1]};
    chart.chartFlags = p[kChartFlags];
    chart.extra3 = p[kExtra3];
    chart.extra4 = GetF64(p + kExtra4);
    return chart;
}

void PutFileChart(std::uint8_t* p, const FileChart& chart) {
    using namespace file_chart;
    p[kChartType] = chart.chartType;
    p[kChartSubType] = chart.chartSubType;
    PutChartEvent(p + kEvent, chart.event);
    p[kReserved1] = chart.reserved1;
    PutText(p + kReserved2, kReserved2Width, chart.reserved2);
    PutText(p + kReserved3, kReserved3Width, chart.reserved3);
    p[kReserved4] = chart.reserved4;
    p[kHouseCode] = chart.houseCode;
    p[kAyanamsaCode] = chart.ayanamsaCode;
    PutF32(p + kAyanamsaValue, chart.ayanamsaValue);
    p[kRecordForm] = chart.recordForm;
    PutI32(p + kCommentRef, chart.commentRef);
    PutChartEvent(p + kEvent2, chart.event2);
    PutI16(p + kExtra1, chart.extra1);
    p[kExtra2] = chart.extra2;
    p[kExtraPair] = chart.extraPair[0];
    p[kExtraPair + 1] = chart.extraPair[1];
    p[kChartFlags] = chart.chartFlags;
    p[kExtra3] = chart.extra3;
    PutF64(p + kExtra4, chart.extra4);
}

Format1Record GetFormat1Record(const std::uint8_t* p) {
    using namespace format1;
    Format1Record record;
    record.chartType = p[kChartType];
    record.chartSubType = p[kChartSubType];
    record.chartFlags = p[kChartFlags];
    record.extraPair0 = p[kExtraPair0];
    record.extra3 = p[kExtra3];
    record.name = GetField(p + kName, kNameWidth);
    record.place = GetField(p + kPlace, kPlaceWidth);
    record.country = GetField(p + kCountry, kPlaceWidth);
    record.zoneHours = GetF32(p + kZoneHours);
    record.zoneName = GetField(p + kZoneName, kZoneNameWidth);
    record.day = p[kDay];
    record.month = p[kMonth];
    record.year = GetI16(p + kYear);
    record.hour = p[kHour];
    record.minute = p[kHour + 1];
    record.second = p[kHour + 2];
    record.longWest = p[kLongWest];
    record.longDegrees = p[kLongDegrees];
    record.longMinutes = p[kLongDegrees + 1];
    record.longSeconds = p[kLongDegrees + 2];
    record.latNorth = p[kLatNorth];
    record.latDegrees = p[kLatDegrees];
    record.latMinutes = p[kLatDegrees + 1];
    record.latSeconds = p[kLatDegrees + 2];
    record.houseCode = p[kHouseCode];
    record.ayanamsaCode = p[kAyanamsaCode];
    record.ayanamsaValue = GetF32(p + kAyanamsaValue);
    record.recordForm = p[kRecordForm];
    record.commentRef = GetI32(p + kCommentRef);
    return record;
}

void PutFormat1Record(std::uint8_t* p, const Format1Record& record) {
    using namespace format1;
    p[kChartType] = record.chartType;
    p[kChartSubType] = record.chartSubType;
    p[kChartFlags] = record.chartFlags;
    p[kExtraPair0] = record.extraPair0;
    p[kExtra3] = record.extra3;
    PutText(p + kName, kNameWidth, record.name);
    PutText(p + kPlace, kPlaceWidth, record.place);
    PutText(p + kCountry, kPlaceWidth, record.country);
    PutF32(p + kZoneHours, record.zoneHours);
    PutText(p + kZoneName, kZoneNameWidth, record.zoneName);
    p[kDay] = record.day;
    p[kMonth] = record.month;
    PutI16(p + kYear, record.year);
    PutTime(p + kHour, record.hour, record.minute, record.second);
    p[kLongWest] = record.longWest;
    PutTime(p + kLongDegrees, record.longDegrees, record.longMinutes, record.longSeconds);
    p[kLatNorth] = record.latNorth;
    PutTime(p + kLatDegrees, record.latDegrees, record.latMinutes, record.latSeconds);
    p[kHouseCode] = record.houseCode;
    p[kAyanamsaCode] = record.ayanamsaCode;
    PutF32(p + kAyanamsaValue, record.ayanamsaValue);
    p[kRecordForm] = record.recordForm;
    PutI32(p + kCommentRef, record.commentRef);
}

void ChartToFormat0(const FileChart& fileChart, std::uint8_t* p) {
    using namespace format0;
    const ChartEvent& event = fileChart.event;
    std::fill_n(p, kFormat0Size, std::uint8_t{0});
    PutText(p + kName, kNameWidth, event.name);
    PutI16(p + kChartType, fileChart.chartType);
    PutI16(p + kChartSubType, fileChart.chartSubType);
    PutText(p + kPlace, kPlaceWidth, event.place);
    PutText(p + kCountry, kPlaceWidth, event.country);
    PutF32(p + kZoneHours, event.zoneHours);
    PutText(p + kZoneName, kZoneNameWidth, event.zoneName);
    PutI16(p + kDay, event.day);
    PutI16(p + kMonth, event.month);
    PutI16(p + kYear, event.year);
    PutI16(p + kHour, event.hour);
    PutI16(p + kMinute, event.minute);
    PutI16(p + kSecond, event.second);

    // The plain form has no seconds, so that the packed one is always written.
    const auto packed = [](const SplitDegrees& split) {
        return static_cast<std::int16_t>(split.minutes * 100 + split.seconds);
    };
    const SplitDegrees longitude = Split(event.longitude);
    PutI16(p + kLongDegrees, RoundToInt16(longitude.degrees));
    PutI16(p + kLongMinutes, packed(longitude));
    PutI16(p + kLongEast, event.longitude >= 0 ? kFalse : kTrue);
    const SplitDegrees latitude = Split(event.latitude);
    PutI16(p + kLatDegrees, RoundToInt16(latitude.degrees));
    PutI16(p + kLatMinutes, packed(latitude));
    PutI16(p + kLatNorth, event.latitude >= 0 ? kTrue : kFalse);

    PutI16(p + kHouseCode, fileChart.houseCode);
    PutI16(p + kAyanamsaCode, fileChart.ayanamsaCode);
    PutI16(p + kForm, std::max<std::int16_t>(fileChart.recordForm, 1));
}

void Format0ToChart(const std::uint8_t* p, FileChart& fileChart) {
    using namespace format0;
    FileChart chart;
    chart.chartType = static_cast<std::uint8_t>(ClampChartType(GetI16(p + kChartType)));
    chart.chartSubType = static_cast<std::uint8_t>(ClampChartSubType(GetI16(p + kChartSubType)));
    chart.event.name = GetField(p + kName, kNameWidth);
    chart.event.place = GetField(p + kPlace, kPlaceWidth);
    chart.event.country = GetField(p + kCountry, kPlaceWidth);
    chart.event.zoneHours = GetF32(p + kZoneHours);
    chart.event.zoneName = GetField(p + kZoneName, kZoneNameWidth);
    chart.event.day = LowByte(GetI16(p + kDay));
    chart.event.month = LowByte(GetI16(p + kMonth));
    chart.event.year = GetI16(p + kYear);
    chart.event.hour = LowByte(GetI16(p + kHour));
    chart.event.minute = LowByte(GetI16(p + kMinute));
    chart.event.second = LowByte(GetI16(p + kSecond));

    const std::int16_t form = GetI16(p + kForm);
    const bool packed = form >= 1;
    chart.recordForm = packed ? LowByte(form) : std::uint8_t{1};
    const float longitude =
        Format0Degrees(GetI16(p + kLongDegrees), GetI16(p + kLongMinutes), packed);
    const float latitude = Format0Degrees(GetI16(p + kLatDegrees), GetI16(p + kLatMinutes), packed);
    chart.event.longitude = GetI16(p + kLongEast) != 0 ? -longitude : longitude;
    chart.event.latitude = GetI16(p + kLatNorth) != kTrue ? -latitude : latitude;

    chart.houseCode = LowByte(GetI16(p + kHouseCode));
    chart.ayanamsaCode = LowByte(GetI16(p + kAyanamsaCode));
    // The record holds no value of its own: the one of the user's zodiac stands in.
    chart.ayanamsaValue = static_cast<float>(options.userSVP);
    fileChart = std::move(chart);
}

void Format1ToChart(const Format1Record& record, FileChart& fileChart) {
    FileChart chart;
    chart.chartType = record.chartType;
    chart.chartSubType = record.chartSubType;
    chart.event.name = record.name;
    chart.event.place = record.place;
    chart.event.country = record.country;
    chart.event.zoneHours = record.zoneHours;
    chart.event.zoneName = record.zoneName;
    chart.event.day = record.day;
    chart.event.month = record.month;
    chart.event.year = record.year;
    chart.event.hour = record.hour;
    chart.event.minute = record.minute;
    chart.event.second = record.second;
    const auto longitude =
        static_cast<float>(Degrees(record.longDegrees, record.longMinutes, record.longSeconds));
    const auto latitude =
        static_cast<float>(Degrees(record.latDegrees, record.latMinutes, record.latSeconds));
    chart.event.longitude = record.longWest != 0 ? longitude : -longitude;
    chart.event.latitude = record.latNorth != 0 ? latitude : -latitude;
    chart.houseCode = record.houseCode;
    chart.ayanamsaCode = record.ayanamsaCode;
    chart.ayanamsaValue = record.ayanamsaValue;
    chart.recordForm = record.recordForm;
    chart.commentRef = record.commentRef;
    fileChart = std::move(chart);
}

void ChartToFormat1(const FileChart& fileChart, Format1Record& record) {
    const ChartEvent& event = fileChart.event;
    Format1Record out;
    out.chartType = fileChart.chartType;
    out.chartSubType = fileChart.chartSubType;
    out.chartFlags = fileChart.chartFlags;
    out.extraPair0 = fileChart.extraPair[0];
    out.extra3 = fileChart.extra3;
    out.name = event.name.substr(0, format1::kNameWidth);
    out.place = event.place;
    out.country = event.country;
    out.zoneHours = event.zoneHours;
    out.zoneName = event.zoneName;
    out.day = event.day;
    out.month = event.month;
    out.year = event.year;
    out.hour = event.hour;
    out.minute = event.minute;
    out.second = event.second;

    const SplitDegrees longitude = Split(event.longitude);
    out.longWest = event.longitude >= 0 ? 1 : 0;
    out.longDegrees = DegreeByte(longitude.degrees);
    out.longMinutes = longitude.minutes;
    out.longSeconds = longitude.seconds;
    const SplitDegrees latitude = Split(event.latitude);
    out.latNorth = event.latitude >= 0 ? 1 : 0;
    out.latDegrees = DegreeByte(latitude.degrees);
    out.latMinutes = latitude.minutes;
    out.latSeconds = latitude.seconds;

    out.houseCode = fileChart.houseCode;
    out.ayanamsaCode = fileChart.ayanamsaCode;
    out.ayanamsaValue = fileChart.ayanamsaValue;
    out.recordForm = fileChart.recordForm;
    out.commentRef = fileChart.commentRef;
    record = std::move(out);
}

std::int64_t ChartRecordLength(std::int16_t type) {
    switch (type) {
        case chart_file::kFormat0:
            return kFormat0Size;
        case chart_file::kFormat1:
            return kFormat1Size;
        case chart_file::kFormat2:
            return kFileChartSize;
        default:
            return 0;
    }
}

void PutChartRecord(std::int16_t type, const FileChart& fileChart, std::uint8_t* p) {
    switch (type) {
        case chart_file::kFormat0:
            ChartToFormat0(fileChart, p);
            break;
        case chart_file::kFormat1: {
            Format1Record record;
            ChartToFormat1(fileChart, record);
            PutFormat1Record(p, record);
            break;
        }
        default:
            PutFileChart(p, fileChart);
            break;
    }
}

}  // namespace orvantis
