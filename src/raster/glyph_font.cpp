#include "raster/glyph_font.h"

#include <array>

#include "text/code_page.h"

namespace orvantis {

namespace {

struct GlyphRow {
    int byte;
    GlyphEntry entry;
};

constexpr GlyphEntry Sans(char32_t character) {
    return {GlyphSource::Sans, character, {}, {}};
}
constexpr GlyphEntry Symbol(char32_t character) {
    return {GlyphSource::Symbols, character, {}, {}};
}
constexpr GlyphEntry Letters(std::string_view letters) {
    return {GlyphSource::Letters, 0, letters, {}};
}
constexpr GlyphEntry Drawn(GlyphShape shape) {
    return {GlyphSource::Drawn, 0, {}, shape};
}

constexpr GlyphRow kRows[] = {
    // Signs, Aries first.
    {128, Sans(0x2648)},
    {129, Sans(0x2649)},
    {130, Sans(0x264A)},
    {131, Sans(0x264B)},
    {132, Sans(0x264C)},
    {133, Sans(0x264D)},
    {134, Sans(0x264E)},
    {135, Sans(0x264F)},
    {136, Sans(0x2650)},
    {137, Sans(0x2651)},
    {138, Sans(0x2652)},
    {139, Sans(0x2653)},
    {220, Sans(0x2648)},
    {221, Sans(0x2648)},

    // Points, 181 + number.
    {182, Sans(0x263D)},    // the Moon
    {183, Sans(0x2641)},    // the Earth
    {184, Sans(0x2609)},    // the Sun
    {185, Letters("Vu")},   // Vulcan
    {186, Sans(0x263F)},    // Mercury
    {187, Sans(0x2640)},    // Venus
    {188, Sans(0x2642)},    // Mars
    {189, Sans(0x2643)},    // Jupiter
    {190, Sans(0x2644)},    // Saturn
    {191, Sans(0x2645)},    // Uranus
    {192, Sans(0x2646)},    // Neptune
    {193, Sans(0x2647)},    // Pluto
    {194, Sans(0x26B7)},    // Chiron
    {195, Sans(0x26B6)},    // Vesta
    {196, Sans(0x26B4)},    // Pallas
    {197, Sans(0x26B5)},    // Juno
    {198, Sans(0x26B3)},    // Ceres
    {199, Symbol(0x2BDA)},  // Hygeia
    {200, Symbol(0x2BD9)},  // Astraea
    {201, Sans(0x260A)},    // North Node
    {202, Sans(0x260B)},    // South Node
    {203, Letters("As")},   // Ascendant
    {204, Letters("Mc")},   // Midheaven
    {205, Letters("Vx")},   // Vertex
    {206, Letters("Ep")},   // EastPoint
    {207, Sans(0x2297)},    // Pt Fortune
    {208, Symbol(0x2BE0)},  // Cupido
    {209, Symbol(0x2BE1)},  // Hades
    {210, Symbol(0x2BE2)},  // Zeus
    {211, Symbol(0x2BE3)},  // Kronos
    {212, Symbol(0x2BE4)},  // Apollon
    {213, Symbol(0x2BE5)},  // Admetos
    {214, Symbol(0x2BE6)},  // Vulcanus
    {215, Symbol(0x2BE7)},  // Poseidon
    {216, Symbol(0x2BD7)},  // TransPluto
    {217, Sans(0x26B8)},    // Black Moon

    // Aspects, 141 + number, and the bytes that some of them have besides.
    {142, Sans(0x260D)},   // opposition
    {143, Sans(0x25B3)},   // trine
    {144, Sans(0x25A1)},   // square
    {145, Letters("Q")},   // quintile
    {146, Letters("bQ")},  // biquintile
    {147, Sans(0x2736)},   // sextile
    {148, Letters("S")},   // septile
    {149, Letters("bS")},  // biseptile
    {150, Letters("tS")},  // triseptile
    {151, Sans(0x2220)},   // semisquare
    {152, Sans(0x221F)},   // sesquiquadrate
    {153, Letters("N")},   // novile
    {154, Letters("bN")},  // binovile
    {155, Letters("qN")},  // quadnovile
    {156, Sans(0x2225)},   // parallel
    {157, Sans(0x2226)},   // contraparallel
    {158, Letters("D")},   // decile
    {159, Letters("Qx")},  // quincunx
    {160, Letters("tD")},  // tredecile
    {161, Letters("sX")},  // semisextile
    {162, Letters("U")},   // undecile
    {163, Letters("bU")},  // biundecile
    {164, Letters("tU")},  // triundecile
    {165, Letters("qU")},  // quadriundecile
    {166, Letters("pU")},  // quinqueundecile
    {167, Letters("Vg")},  // vigintile
    {223, Sans(0x260C)},   // conjunction
    {224, Sans(0x260D)},
    {225, Sans(0x25B3)},
    {226, Sans(0x2225)},
    {227, Sans(0x2226)},
    {228, Letters("Qx")},

    // Marks.
    {140, Sans(0x211E)},  // retrograde
    {141, Sans(0x25C7)},  // a point of its own kind
    {168, Drawn(GlyphShape::LunarEclipse)},
    {229, Drawn(GlyphShape::SolarEclipse)},
    {169, Sans(0x2605)},   // fixed star
    {176, Sans(0x00B0)},   // degree
    {222, Letters("St")},  // stationary
    {252, Sans(0x2191)},   // above the horizon
    {253, Sans(0x2193)},   // below the horizon
};

std::array<GlyphEntry, 256> MakeTable() {
    std::array<GlyphEntry, 256> table;
    for (int byte = 0; byte < 256; ++byte) {
        table[byte].character = CodePageCharacter(static_cast<std::uint8_t>(byte));
    }
    for (const GlyphRow& row : kRows) table[row.byte] = row.entry;
    return table;
}

}  // namespace

const GlyphEntry& GlyphOf(std::uint8_t byte) {
    static const std::array<GlyphEntry, 256> table = MakeTable();
    return table[byte];
}

}  // namespace orvantis
