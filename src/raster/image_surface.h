// The drawing surface on a picture in memory: what the window shows, what a picture file holds.
//
// Lines, floods, texts and whole pictures are drawn straight onto the rows of the picture; Qt
// paints wide lines that are hard, dashed or more than three pixels wide, and arcs and ellipses
// with smooth edges.
#pragma once

#include <QImage>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "raster/clip.h"
#include "raster/flood.h"
#include "raster/line.h"
#include "raster/text_face.h"
#include "surface/drawing_surface.h"

class QPainter;

namespace orvantis {

/// The colour as a pixel, 0xFFRRGGBB, and back.
constexpr std::uint32_t PixelOf(Colour colour) {
    const auto plain = static_cast<std::uint32_t>(colour);
    return 0xFF000000 | (plain & 0xFF) << 16 | (plain & 0xFF00) | (plain >> 16 & 0xFF);
}
constexpr Colour ColourOf(std::uint32_t pixel) {
    return static_cast<Colour>((pixel >> 16 & 0xFF) | (pixel & 0xFF00) | (pixel & 0xFF) << 16);
}

class ImageSurface : public DrawingSurface {
  public:
    /// A black picture of the size, each side within 0 to 32767 pixels; a size outside counts as
    /// the nearest end. `dotsPerInch` turns the points of fonts into pixels.
    ImageSurface(int width, int height, double dotsPerInch = 96);

    /// Changes the size as the constructor sets it. The picture is black again, the clip is gone.
    void Resize(int width, int height, double dotsPerInch);

    /// The picture, to be shown or written at once: it shares the surface's memory, so it changes
    /// with it and must not outlive it or a Resize.
    QImage View();

    /// FloodFill that also tells which pixels it has painted.
    bool FloodRuns(int x, int y, Colour colour, Colour border, std::vector<PixelRun>& painted);

    /// The pixels of the moment.
    const Image& Pixels() {
        FlushWideLine();
        return image_;
    }

    /// Called by Refresh. May be empty.
    std::function<void()> onRefresh;

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
    void Refresh() override;

  private:
    std::uint32_t* Row(int y) {
        return image_.pixels.data() + static_cast<std::size_t>(y) * image_.width;
    }
    bool PenIsFine() const;
    void DrawHardLine(const LineWalk& walk);
    void DrawClippedLine(LineWalk walk);
    void DrawSmoothLine(LineWalk walk);
    void DrawClippedSmoothLine(LineWalk walk);
    void FillRow(int y, int left, int right, const Brush& brush);
    void DrawRing(const PixelBox& box);
    void DrawLoop(const std::vector<SurfacePoint>& points);
    void DrawMask(const GlyphMask& mask, int x, int y);
    void FlushWideLine() {
        if (!wideLine_.empty()) PaintWideLine();
    }
    void PaintWideLine();
    template <typename Work>
    void WithPainter(const Work& work);

    Image image_;
    double dotsPerInch_ = 96;
    Clip clip_;
    Pen pen_;
    std::uint32_t ink_ = 0xFF000000;  // the pen's colour as a pixel
    TextFace* face_ = nullptr;        // of font_, found when first needed
    Font font_;
    SurfacePoint current_;
    std::int64_t dashStep_ = 0;           // pixels of the pattern used up since MoveTo
    double wideDashOffset_ = 0;           // the same for wide lines, in pen widths
    std::vector<SurfacePoint> wideLine_;  // a wide line not painted yet
};

}  // namespace orvantis
