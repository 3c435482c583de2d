// build-defaults: makes the files of settings, point selection and point colours that the program
// starts with, through the routines that read them back.
#include <array>
#include <cstdio>
#include <string>

#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "surface/null_shell.h"

namespace orvantis {

namespace {

struct PointStyle {
    const char* rgb;  // red, green and blue, two hexadecimal digits each
    bool drawn;
};

// Points 1 to 36. Sun, Moon and the planets are drawn. Their colours are light, since land and sea
// are darker than any of them, and far apart from each other (36 or more in L*a*b*, but for
// Saturn and the Moon with 33): a line is told by its colour, and not by its label alone.
constexpr std::array<PointStyle, 36> kPoints = {{
    {"F4F4FF", true},   // Moon
    {"A0D0A0", false},  // Earth
    {"FFD800", true},   // Sun
    {"FF9080", false},  // Vulcan
    {"FFA040", true},   // Mercury
    {"8CF58C", true},   // Venus
    {"FF6650", true},   // Mars
    {"CF98FF", true},   // Jupiter
    {"EBCBA0", true},   // Saturn
    {"50F0F0", true},   // Uranus
    {"90C0FF", true},   // Neptune
    {"FF7CBC", true},   // Pluto
    {"D0E870", false},  // Chiron
    {"FFC0A0", false},  // Vesta
    {"A0E8D0", false},  // Pallas
    {"FFB0E0", false},  // Juno
    {"D8F0A0", false},  // Ceres
    {"B0E0FF", false},  // Hygeia
    {"E8D8FF", false},  // Astraea
    {"C8FFC8", false},  // North Node
    {"FFC8C8", false},  // South Node
    {"FFFFFF", false},  // Ascendant
    {"FFFFFF", false},  // Midheaven
    {"FFFFFF", false},  // Vertex
    {"FFFFFF", false},  // EastPoint
    {"FFF0A0", false},  // Pt Fortune
    {"F0B0FF", false},  // Cupido
    {"C0A8F0", false},  // Hades
    {"FFB070", false},  // Zeus
    {"FFE890", false},  // Kronos
    {"A8F0F8", false},  // Apollon
    {"D0D0B0", false},  // Admetos
    {"FF8888", false},  // Vulcanus
    {"B8D0FF", false},  // Poseidon
    {"F8A0D0", false},  // TransPluto
    {"D0D0D8", false},  // Black Moon
}};

// Land and sea are both of middling darkness: black outlines and borders stand out on them with a
// contrast of at least 3 to 1 (4.2 on the land, 3.0 on the sea), white and yellow lines with 4.6
// or more, and the colours of the points with 1.7 or more.
constexpr char kLand[] = "637550";
constexpr char kSea[] = "2B5C8A";

Colour FromHex(const char* rgb) {
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    std::sscanf(rgb, "%2x%2x%2x", &red, &green, &blue);
    return static_cast<Colour>(red | green << 8 | blue << 16);
}

// What the folder lacks after writing; empty: nothing.
std::string WriteDefaults(const std::string& folder) {
    for (std::size_t i = 0; i < kPoints.size(); ++i) {
        pointSelection[i + 1] = kPoints[i].drawn ? kTrue : kFalse;
        pointColour[i + 1] = FromHex(kPoints[i].rgb);
    }
    settings.mapBackColour = FromHex(kLand);
    settings.specialFillColour = FromHex(kSea);
    session.UserColourFile = folder + "/brimwell.cpt";
    SavePointSelection(folder + "/ovdeflt.pts");
    SaveUserPointColours();
    SaveSettings(folder + "/default.ovs", "Default settings");
    for (const char* name : {"/ovdeflt.pts", "/brimwell.cpt", "/default.ovs"}) {
        if (!FileDate(folder + name)) return folder + name;
    }
    return {};
}

// Says on standard error what the program would say in a box.
class ConsoleShell : public NullShell {
  public:
    BoxAnswer MessageBox(std::string_view text, std::string_view, BoxButtons, BoxIcon) override {
        std::fprintf(stderr, "build-defaults: %.*s\n", static_cast<int>(text.size()), text.data());
        return BoxAnswer::Ok;
    }
};

}  // namespace

}  // namespace orvantis

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("build-defaults FOLDER: writes ovdeflt.pts, brimwell.cpt and default.ovs\n",
                   stderr);
        return 2;
    }
    orvantis::ConsoleShell shell;
    orvantis::session.shell = &shell;
    const std::string missing = orvantis::WriteDefaults(argv[1]);
    if (missing.empty()) return 0;
    std::fprintf(stderr, "build-defaults: %s: can't be written\n", missing.c_str());
    return 1;
}
