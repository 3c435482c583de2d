// The session's process-wide records.
#include "session/session_state.h"
#include "session/settings.h"

namespace orvantis {

SessionState session;
Settings settings;
Options options;
std::array<Flag, kPointCount + 1> pointSelection{};
std::array<Colour, kPointCount + 1> pointColour{};

}  // namespace orvantis
