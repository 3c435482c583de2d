#include "desktop/window_text.h"

#include "text/code_page.h"

namespace orvantis {

QString WindowText(std::string_view bytes) {
    return QString::fromStdString(ToUtf8(bytes));
}

std::string TypedBytes(const QString& text) {
    return FromUtf8(text.toStdString());
}

}  // namespace orvantis
