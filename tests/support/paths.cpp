#include "support/paths.h"

namespace orvantis {

std::string DataFile(std::string_view name) {
    return std::string(ORVANTIS_DATA "/").append(name);
}

std::string TestFile(std::string_view name) {
    return std::string(ORVANTIS_TESTS "/").append(name);
}

std::string ProgramFile(std::string_view name) {
    return std::string(ORVANTIS_BIN "/").append(name);
}

std::string ProgramVersion() {
    return ORVANTIS_VERSION;
}

}  // namespace orvantis
