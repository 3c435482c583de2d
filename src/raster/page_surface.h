// The drawing surface on a page: lines, shapes and texts are kept as such, so that a printer, a PDF
// or an SVG draws them as sharp as it can.
//
// Floods have no shape of their own. A page that holds them keeps a picture of everything that is
// drawn, in which they run as they do in the window, and shows what they painted as a second
// picture beneath all the rest. That second one holds no lines: where a line held a flood, the
// flood's colour runs on beneath it.
#pragma once

#include <QPainterPath>
#include <memory>
#include <string_view>
#include <vector>

#include "raster/image_surface.h"
#include "raster/text_face.h"
#include "surface/drawing_surface.h"

namespace orvantis {

/// What may be drawn on, in pixels of the page: all of it, a rectangle, or the ellipse in one.
struct PageClip {
    enum class Kind { None, Rectangle, Ellipse };
    Kind kind = Kind::None;
    PixelBox box;
};

/// One letter of a text.
struct PageGlyph {
    int x = 0;  ///< where it stands
    int y = 0;  ///< base line
    std::uint8_t byte = 0;
};

/// One thing on a page. A line through a pixel runs through the pixel's middle, which lies half a
/// pixel right of and below its number.
struct PageItem {
    enum class Kind {
        Line,   ///< through `points`, with the pen
        Shape,  ///< `path`: inside with the brush, outline with the pen if `outlined`
        Text    ///< `glyphs` of `face`, in the pen's colour
    };
    Kind kind = Kind::Line;
    std::size_t clip = 0;  ///< index into PageRecord::clips
    Pen pen;
    Brush brush;
    bool outlined = false;
    std::vector<SurfacePoint> points;
    QPainterPath path;  ///< in pixels of the page, middles of pixels at .5
    TextFace* face = nullptr;
    std::vector<PageGlyph> glyphs;
};

/// A whole page, in the order in which it is drawn.
struct PageRecord {
    int width = 0;  ///< pixels
    int height = 0;
    double dotsPerInch = 96;
    Image beneath;  ///< empty on a page without floods
    std::vector<PageClip> clips{1};
    std::vector<PageItem> items;
};

/// Whether a page can hold floods. They need the memory of two pictures of its size.
enum class PageFloods { None, Beneath };

class PageSurface : public DrawingSurface {
  public:
    /// A white page of the size, each side within 0 to 32767 pixels. Without floods, FloodFill and
    /// PutImage do nothing, GetPixel answers -1 and CopyImage gives an empty picture.
    PageSurface(int width, int height, double dotsPerInch, PageFloods floods);

    /// What has been drawn.
    const PageRecord& Record();

    SurfaceSize Size() const override;
    void Clear(Colour colour) override;
    void SetPen(const Pen& pen) override;
    void SelectFont(const Font& font) override;
    void MoveTo(int x, int y) override;
    void LineTo(int x, int y) override;
    void SetPixel(int x, int y) override;
    Colour GetPixel(int x, int y) override;
    void Rectangle(int left, int top, int right, int bottom, const Brush& brush) override;
    void Ellipse(int left, int top, int right, int bottom, const Brush& brush) override;
    void Arc(int left, int top, int right, int bottom, double startDegrees,
             double spanDegrees) override;
    void Polygon(const std::vector<SurfacePoint>& points, const Brush& brush,
                 bool outline) override;
    void TextOut(int x, int y, std::string_view text, TextAlign align) override;
    SurfaceSize TextExtent(std::string_view text) override;
    bool FloodFill(int x, int y, Colour colour, Colour border) override;
    void ClipToRectangle(int left, int top, int right, int bottom) override;
    void ClipToEllipse(int left, int top, int right, int bottom) override;
    void ClearClip() override;
    void CopyImage(Image& image) override;
    void PutImage(const Image& image) override;
    void Refresh() override {}

  private:
    PageItem& AddItem(PageItem::Kind kind);
    void AddShape(const QPainterPath& path, const Brush& brush, bool outlined);
    bool AddSinglePixel(int left, int top, int right, int bottom);
    void EndLine();
    void SetClip(const PageClip& clip);
    bool MayShow(const PageItem& line) const;
    TextFace& Face();

    PageRecord record_;
    std::unique_ptr<ImageSurface> picture_;  // of everything; null on a page without floods
    Pen pen_;
    Font font_;
    TextFace* face_ = nullptr;  // of font_, found when first needed
    SurfacePoint current_;
    bool lineOpen_ = false;  // the last item is a line that goes on
};

}  // namespace orvantis
