// Numbers as a field of a form shows them.
#pragma once

#include <string>

namespace orvantis {

/// The shortest text from which NumericValue gives the number again: "15", "7.5", "1e+20".
std::string ShortNumberText(float value);

}  // namespace orvantis
