// Files of the user's preferences: settings, point selection, point colours.
#include "session/settings.h"

#include "session/files.h"
#include "session/session_state.h"
#include "session/tables.h"
#include "text/bytes.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace orvantis {

namespace {

// Point selection file: 36 records.
//
// | Offset | Size | Field                          |
// |--------|------|--------------------------------|
// | 0      | 20   | name of the point, blank padded; for the reader, never read back |
// | 20     | 2    | selected                       |
constexpr std::int16_t kSelectionSize = 22;
constexpr std::size_t kSelectionName = 20;
constexpr std::int16_t kFilePoints = 36;

// Point colour file: 36 records, all of one form.
//
// | Length of the file | Size of a record | Field                            |
// |--------------------|------------------|----------------------------------|
// | below 73           | 2                | number of a classic colour, 0 to 15 |
// | 73 and more        | 4                | colour                           |
constexpr std::int64_t kLongColourFile = 73;

// Settings file: one record of 340 bytes.
//
// | Offset | Size | Field                          |
// |--------|------|--------------------------------|
// | 0      | 80   | description, blank padded      |
// | 80     | 4    | mapBackColour                  |
// | 84     | 4    | specialFillColour              |
// | 88     | 210  | lineStyle[0] to [14], 14 each: displayed 2, planetColour 2, colour 4, |
// |        |      | thickness 2, style 2, symbolShape 2 |
// | 298    | 4    | symbolSize                     |
// | 302    | 30   | textFontName, blank padded     |
// | 332    | 4    | textFontSize                   |
// | 336    | 2    | textFontBold                   |
// | 338    | 2    | textFontItalic                 |
constexpr std::int16_t kSettingsSize = 340;
constexpr std::size_t kDescriptionWidth = 80;
constexpr std::size_t kLineStylesAt = 88;
constexpr std::size_t kLineStyleSize = 14;
constexpr std::size_t kSymbolSizeAt = 298;
static_assert(kLineStylesAt + kLineTypeCount * kLineStyleSize == kSymbolSizeAt);

LineStyle GetLineStyle(const std::uint8_t* p) {
    return {GetI16(p), GetI16(p + 2), GetI32(p + 4), GetI16(p + 8), GetI16(p + 10), GetI16(p + 12)};
}

void PutLineStyle(std::uint8_t* p, const LineStyle& style) {
    PutI16(p, style.displayed);
    PutI16(p + 2, style.planetColour);
    PutI32(p + 4, style.colour);
    PutI16(p + 8, style.thickness);
    PutI16(p + 10, style.style);
    PutI16(p + 12, style.symbolShape);
}

Settings GetSettings(const std::uint8_t* p) {
    Settings result;
    result.description = TrimRight(GetText(p, kDescriptionWidth));
    result.mapBackColour = GetI32(p + 80);
    result.specialFillColour = GetI32(p + 84);
    for (std::size_t type = 0; type < kLineTypeCount; ++type) {
        result.lineStyle[type] = GetLineStyle(p + kLineStylesAt + type * kLineStyleSize);
    }
    result.symbolSize = GetF32(p + kSymbolSizeAt);
    result.textFontName = TrimRight(GetText(p + 302, 30));
    result.textFontSize = GetF32(p + 332);
    result.textFontBold = GetI16(p + 336);
    result.textFontItalic = GetI16(p + 338);
    return result;
}

Bytes PutSettings(const Settings& record) {
    Bytes bytes(kSettingsSize);
    std::uint8_t* p = bytes.data();
    PutText(p, kDescriptionWidth, record.description);
    PutI32(p + 80, record.mapBackColour);
    PutI32(p + 84, record.specialFillColour);
    for (std::size_t type = 0; type < kLineTypeCount; ++type) {
        PutLineStyle(p + kLineStylesAt + type * kLineStyleSize, record.lineStyle[type]);
    }
    PutF32(p + kSymbolSizeAt, record.symbolSize);
    PutText(p + 302, 30, record.textFontName);
    PutF32(p + 332, record.textFontSize);
    PutI16(p + 336, record.textFontBold);
    PutI16(p + 338, record.textFontItalic);
    return bytes;
}

// Points that are never drawn as points by a file's wish: the Earth and the chart's own angles.
bool IsNeverSelected(std::int16_t number) {
    return number == 2 || (number >= 22 && number <= 26);
}

}  // namespace

std::array<LineStyle, kLineTypeCount> DefaultLineStyles() {
    constexpr Colour yellow = 0x00FFFF;
    constexpr Colour white = 0xFFFFFF;
    constexpr Colour cyan = 0xFFFF00;
    constexpr Colour red = 0x0000FF;
    return {{
        {-1, 0, 0x000000, 1, 0, 0},
        {-1, -1, yellow, 1, 0, 2},
        {-1, 0, yellow, 1, 2, 2},
        {-1, 0, white, 1, 0, 1},
        {-1, 0, white, 1, 0, 1},
        {0, 0, yellow, 1, 0, 2},
        {0, 0, yellow, 1, 0, 2},
        {0, -1, cyan, 2, 0, 0},
        {0, 0, yellow, 1, 0, 2},
        {0, 0, yellow, 1, 0, 2},
        {0, 0, yellow, 1, 0, 2},
        {0, 0, yellow, 1, 0, 2},
        {-1, 0, red, 3, 0, 2},
        {-1, 0, 0x000000, 1, 0, 2},
        {-1, -1, white, 1, 0, 2},
    }};
}

Colour ClassicColour(std::int16_t index) {
    static constexpr std::array<Colour, 16> colours = {
        0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
        0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
    if (index < 0 || index > 15) return 0;
    return colours[static_cast<std::size_t>(index)];
}

void LoadPointSelection(std::string_view path) {
    if (!FileExists(path)) return;
    const FileHandle file = FileOpener(path, open_mode::kRecords, kSelectionSize, kFalse);
    if (file < 1) return;
    for (std::int16_t i = 1; i <= kFilePoints; ++i) {
        Flag& selected = pointSelection[static_cast<std::size_t>(i)];
        selected = kTrue;
        std::array<std::uint8_t, kSelectionSize> record{};
        const std::int64_t position = std::int64_t{i - 1} * kSelectionSize + 1;
        if (ReadWhatIsThere(file, position, record) == record.size()) {
            selected = GetI16(&record[kSelectionName]);
        }
        if (IsNeverSelected(i)) selected = kFalse;
    }
    CloseFile(file);
}

void SavePointSelection(std::string_view path) {
    Bytes bytes(static_cast<std::size_t>(kFilePoints) * kSelectionSize);
    for (std::int16_t i = 1; i <= kFilePoints; ++i) {
        std::uint8_t* record = &bytes[static_cast<std::size_t>(i - 1) * kSelectionSize];
        PutText(record, kSelectionName, PointName(i));
        PutI16(record + kSelectionName, pointSelection[static_cast<std::size_t>(i)]);
    }
    StoreFile(path, bytes);
}

void LoadPointColours(std::string_view path) {
    if (!FileExists(path)) return;
    const FileHandle file = FileOpener(path, open_mode::kRecords, 4, kFalse);
    if (file < 1) return;
    const std::int16_t length = FileLength(file) < kLongColourFile ? 2 : 4;
    for (std::int16_t i = 1; i <= kFilePoints; ++i) {
        std::array<std::uint8_t, 4> record{};
        const std::span<std::uint8_t> bytes(record.data(), static_cast<std::size_t>(length));
        if (ReadWhatIsThere(file, std::int64_t{i - 1} * length + 1, bytes) < bytes.size()) continue;
        const std::int16_t index = GetI16(record.data());
        if (length == 2 && (index < 0 || index > 15)) continue;
        pointColour[static_cast<std::size_t>(i)] =
            length == 2 ? ClassicColour(index) : GetI32(record.data());
    }
    CloseFile(file);
}

void SaveUserPointColours() {
    Bytes bytes(static_cast<std::size_t>(kFilePoints) * 4);
    for (std::size_t i = 1; i <= static_cast<std::size_t>(kFilePoints); ++i) {
        PutI32(&bytes[(i - 1) * 4], pointColour[i]);
    }
    ReplaceFile(session.UserColourFile, bytes);
}

Flag LoadSettings(std::string_view path, Flag redraw) {
    session.SettingsPath = path;
    session.SettingsName = FromUtf8(BaseName(path, true));
    const FileHandle file = FileOpener(path, open_mode::kRecords, kSettingsSize, kFalse);
    if (file < 1) return kTrue;
    std::array<std::uint8_t, kSettingsSize> record{};
    const bool whole = ReadWhatIsThere(file, 1, record) == record.size();
    CloseFile(file);
    if (!whole) return kTrue;
    // Surfaces show any colour as it is, so that land and sea stay as the file has them.
    settings = GetSettings(record.data());
    if (redraw != 0 && plotAfterSettings != nullptr) plotAfterSettings();
    return kFalse;
}

bool SaveSettings(std::string_view path, std::string_view description) {
    const std::string before = settings.description;
    settings.description = Trim(description).substr(0, kDescriptionWidth);
    if (ReplaceFile(path, PutSettings(settings))) return true;
    settings.description = before;
    return false;
}

void (*plotAfterSettings)() = nullptr;

}  // namespace orvantis
