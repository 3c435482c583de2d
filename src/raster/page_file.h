// Pages as files, and on whatever else Qt paints: a printer. Paths are the platform's own. A file
// is replaced only by a whole new one.
#pragma once

#include <string_view>

#include "raster/page_surface.h"

class QPainter;

namespace orvantis {

/// Draws the page with a painter of one unit a pixel of the page.
void DrawPage(QPainter& painter, const PageRecord& page);

/// Writes the page as PDF (ISO 32000-1), in its true size. The font of a text is embedded where the
/// system has the same font; else its letters are outlines. False if it couldn't be written; an
/// older file then stays.
bool SavePdf(std::string_view nativePath, const PageRecord& page);

/// The same as SVG 1.1. Texts are outlines, so that they look the same wherever they are shown.
/// False as well if the picture beneath is too large for a PNG.
bool SaveSvg(std::string_view nativePath, const PageRecord& page);

/// Lengths of dashes and gaps of a pen in pixels; none of a solid one. Those of a width of one
/// pixel are those of raster/line.h, wider ones grow with the width.
std::vector<double> DashLengths(const Pen& pen);

/// The lines of the cross hatch within a box, of which a shape shows what lies in it.
QPainterPath HatchLines(const QRectF& box);

}  // namespace orvantis
