#include "text/text_state.h"

#include "text/zones.h"

namespace orvantis {

TextState textState;
ZoneTable zones;

}  // namespace orvantis
