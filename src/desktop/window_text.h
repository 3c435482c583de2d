// Text of the core in the window.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace orvantis {

/// Bytes of code page 1252 as a window shows them.
QString WindowText(std::string_view bytes);

/// What a user typed as bytes of code page 1252.
std::string TypedBytes(const QString& text);

}  // namespace orvantis
