// The drawing surface: all that the program asks of whatever it draws on. The core draws through
// this interface alone, so the same routines serve the window, the printer, a picture file and the
// tests.
//
// Coordinates are whole pixels (or device units of a page), x to the right from 0, y downward
// from 0. A coordinate may lie far outside the surface, within 16 bits; what falls outside the
// surface or the clip is not drawn and is not an error.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "surface/values.h"

namespace orvantis {

/// Line styles by their number in files.
enum class LineDash : std::int16_t { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4 };

/// The pen draws lines, outlines, single pixels and text.
struct Pen {
    int width = 1;                    ///< pixels, 1 or more; a wide line lies centred on its path
    LineDash dash = LineDash::Solid;  ///< the pattern runs on from LineTo to LineTo
    Colour colour = 0;                ///< colour of lines, pixels and text
    bool smooth = false;              ///< true: edges may be blended. The base map's lines never
                                      ///< are, since floods need hard borders.
};

/// How the inside of a rectangle, an ellipse or a polygon is painted.
enum class FillKind { None, Solid, DiagonalCross };

struct Brush {
    FillKind kind = FillKind::None;
    Colour colour = 0;
};

/// A font. The name kGlyphFontName means the program's own glyph font.
struct Font {
    std::string name;
    float size = 9;  ///< points
    bool bold = false;
    bool italic = false;
};

/// The font of signs, points and aspects; its bytes are those of text/code_page.h.
inline constexpr std::string_view kGlyphFontName = "QX Symbol";

/// Which point of a text stands at the x given. Vertically the y given is always the text's top.
enum class TextAlign { Left, Centre, Right };

struct SurfacePoint {
    int x = 0;
    int y = 0;
};

struct SurfaceSize {
    int width = 0;
    int height = 0;
};

class DrawingSurface {
  public:
    virtual ~DrawingSurface() = default;

    /// Size of the whole surface.
    virtual SurfaceSize Size() const = 0;

    /// Sets the whole surface to one colour, whatever the clip.
    virtual void Clear(Colour colour) = 0;

    virtual void SetPen(const Pen& pen) = 0;

    /// Sets the font of TextOut and TextExtent.
    virtual void SelectFont(const Font& font) = 0;

    /// Sets the current point, and starts the dash pattern anew, as Rectangle, Arc and Polygon do.
    virtual void MoveTo(int x, int y) = 0;

    /// Draws from the current point up to, but not including, (x, y), which becomes the current
    /// point. A solid line of width 1 that isn't smooth holds a flood: each of its pixels touches
    /// the next at a side or a corner, and so do lines that join, while a flood spreads through
    /// sides alone. Which pixels it takes doesn't depend on the clip. A smooth line of width 1
    /// reaches at most one pixel aside of its path; a wider solid one ends round, and so reaches
    /// half its width beyond its ends.
    virtual void LineTo(int x, int y) = 0;

    /// Sets one pixel to the pen's colour.
    virtual void SetPixel(int x, int y) = 0;

    /// Colour of a pixel, without palette mark; -1 outside the surface, or on a surface that can't
    /// be read. Sees all that was drawn before.
    virtual Colour GetPixel(int x, int y) = 0;

    /// Outline with the pen and inside with the brush. Left and top inclusive, right and bottom
    /// exclusive; a box without pixels draws nothing. The current point stays, here and in all
    /// operations below.
    virtual void Rectangle(int left, int top, int right, int bottom, const Brush& brush) = 0;

    /// The ellipse that fills the same box that Rectangle would draw.
    virtual void Ellipse(int left, int top, int right, int bottom, const Brush& brush) = 0;

    /// Part of the outline of that ellipse, with the pen. Angles in degrees, counted anticlockwise
    /// from the right; spanDegrees may be negative.
    virtual void Arc(int left, int top, int right, int bottom, double startDegrees,
                     double spanDegrees) = 0;

    /// Closed polygon: inside with the brush, outline with the pen if outline is true.
    virtual void Polygon(const std::vector<SurfacePoint>& points, const Brush& brush,
                         bool outline) = 0;

    /// Writes bytes of the font's own code page in the pen's colour; the background stays.
    virtual void TextOut(int x, int y, std::string_view text, TextAlign align) = 0;

    /// Width of the text and height of a line in the selected font.
    virtual SurfaceSize TextExtent(std::string_view text) = 0;

    /// Paints the region around (x, y), four-connected, that is bounded by pixels of the border
    /// colour and by the clip. Returns false, and paints nothing, if (x, y) itself is a border
    /// pixel, lies outside the surface or the clip, or the surface can't flood.
    virtual bool FloodFill(int x, int y, Colour colour, Colour border) = 0;

    /// Limits all drawing but Clear, PutImage to a rectangle (left and top inclusive, right and
    /// bottom exclusive) or to the ellipse in it. A clip replaces the one before.
    virtual void ClipToRectangle(int left, int top, int right, int bottom) = 0;
    virtual void ClipToEllipse(int left, int top, int right, int bottom) = 0;
    virtual void ClearClip() = 0;

    /// Copies the whole surface out, or puts a picture down at the top left, whatever the clip.
    virtual void CopyImage(Image& image) = 0;
    virtual void PutImage(const Image& image) = 0;

    /// Shows what has been drawn so far to the user, where the surface has a user. Pen, font, clip,
    /// current point and the picture itself stay as they are.
    virtual void Refresh() = 0;
};

}  // namespace orvantis
