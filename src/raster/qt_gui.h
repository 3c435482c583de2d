// Qt's graphics without a window.
#pragma once

#include <QColor>

#include "surface/values.h"

namespace orvantis {

/// A colour of the core for Qt.
QColor QtColour(Colour colour);

/// Makes sure that Qt's fonts and painting can be used: where the program has made no application
/// object of its own, makes one that needs no display. Cheap when called again.
void EnsureQtGui();

/// Keeps remarks of Qt about its surroundings off standard error, which carries the program's own
/// complaints; what ends the program is still shown.
void QuietQt();

}  // namespace orvantis
