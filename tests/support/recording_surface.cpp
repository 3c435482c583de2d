#include "support/recording_surface.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace orvantis {

namespace {

template <typename... Parts>
std::string Line(const Parts&... parts) {
    std::ostringstream text;
    const char* gap = "";
    ((text << gap << parts, gap = " "), ...);
    return text.str();
}

std::size_t PixelIndex(int x, int y, int width) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
}

std::string BrushText(const Brush& brush) {
    switch (brush.kind) {
        case FillKind::Solid:
            return Line("solid", brush.colour);
        case FillKind::DiagonalCross:
            return Line("cross", brush.colour);
        default:
            return "none";
    }
}

}  // namespace

RecordingSurface::RecordingSurface(int width, int height)
    : width_(width),
      height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)),
      clipRight_(width),
      clipBottom_(height) {}

void RecordingSurface::Resize(int width, int height) {
    width_ = width;
    height_ = height;
    pixels_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
    ClearClip();
}

void RecordingSurface::Note(std::string line) {
    if (onCall) onCall(line);
    if (recording) log.push_back(std::move(line));
}

std::vector<std::string> RecordingSurface::Calls(std::string_view word) const {
    std::vector<std::string> found;
    for (const std::string& line : log) {
        if (line.starts_with(word) && (line.size() == word.size() || line[word.size()] == ' ')) {
            found.push_back(line);
        }
    }
    return found;
}

bool RecordingSurface::InClip(int x, int y) const {
    if (x < std::max(0, clipLeft_) || x >= std::min(width_, clipRight_)) return false;
    if (y < std::max(0, clipTop_) || y >= std::min(height_, clipBottom_)) return false;
    if (!ellipseClip_) return true;
    const double a = (x + 0.5 - clipLeft_) / (clipRight_ - clipLeft_) * 2 - 1;
    const double b = (y + 0.5 - clipTop_) / (clipBottom_ - clipTop_) * 2 - 1;
    return a * a + b * b <= 1;
}

void RecordingSurface::Plot(int x, int y) {
    if (InClip(x, y)) pixels_[PixelIndex(x, y, width_)] = PlainColour(pen_.colour);
}

SurfaceSize RecordingSurface::Size() const {
    return {width_, height_};
}

void RecordingSurface::Clear(Colour colour) {
    Note(Line("Clear", colour));
    std::fill(pixels_.begin(), pixels_.end(), PlainColour(colour));
}

void RecordingSurface::SetPen(const Pen& pen) {
    pen_ = pen;
    Note(Line("SetPen", pen.width, static_cast<int>(pen.dash), pen.colour));
}

void RecordingSurface::SelectFont(const Font& font) {
    Note(Line("SelectFont", font.name, font.size, font.bold, font.italic));
}

void RecordingSurface::MoveTo(int x, int y) {
    Note(Line("MoveTo", x, y));
    x_ = x;
    y_ = y;
}

void RecordingSurface::LineTo(int x, int y) {
    Note(Line("LineTo", x, y));
    const long dx = std::abs(x - x_);
    const long dy = -std::abs(y - y_);
    const int stepX = x_ < x ? 1 : -1;
    const int stepY = y_ < y ? 1 : -1;
    long balance = dx + dy;
    while (x_ != x || y_ != y) {
        Plot(x_, y_);
        const long twice = 2 * balance;
        if (twice >= dy) {
            balance += dy;
            x_ += stepX;
        }
        if (twice <= dx) {
            balance += dx;
            y_ += stepY;
        }
    }
}

void RecordingSurface::SetPixel(int x, int y) {
    Note(Line("SetPixel", x, y));
    Plot(x, y);
}

Colour RecordingSurface::GetPixel(int x, int y) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return -1;
    return pixels_[PixelIndex(x, y, width_)];
}

void RecordingSurface::Rectangle(int left, int top, int right, int bottom, const Brush& brush) {
    Note(Line("Rectangle", left, top, right, bottom, BrushText(brush)));
    if (left >= right || top >= bottom) return;
    for (int x = std::max(left, 0); x < std::min(right, width_); ++x) {
        Plot(x, top);
        Plot(x, bottom - 1);
    }
    for (int y = std::max(top, 0); y < std::min(bottom, height_); ++y) {
        Plot(left, y);
        Plot(right - 1, y);
    }
}

void RecordingSurface::Ellipse(int left, int top, int right, int bottom, const Brush& brush) {
    Note(Line("Ellipse", left, top, right, bottom, BrushText(brush)));
}

void RecordingSurface::Arc(int left, int top, int right, int bottom, double startDegrees,
                           double spanDegrees) {
    Note(Line("Arc", left, top, right, bottom, startDegrees, spanDegrees));
}

void RecordingSurface::Polygon(const std::vector<SurfacePoint>& points, const Brush& brush,
                               bool outline) {
    Note(Line("Polygon", points.size(), BrushText(brush), outline));
    for (const SurfacePoint& p : points) Note(Line("  vertex", p.x, p.y));
}

void RecordingSurface::TextOut(int x, int y, std::string_view text, TextAlign align) {
    Note(Line("TextOut", x, y, static_cast<int>(align), text));
}

SurfaceSize RecordingSurface::TextExtent(std::string_view text) {
    return {charWidth * static_cast<int>(text.size()), charHeight};
}

bool RecordingSurface::FloodFill(int x, int y, Colour colour, Colour border) {
    Note(Line("FloodFill", x, y, colour, border));
    if (!InClip(x, y) || GetPixel(x, y) == PlainColour(border)) return false;
    std::vector<bool> seen(pixels_.size());
    std::vector<SurfacePoint> waiting{{x, y}};
    while (!waiting.empty()) {
        const SurfacePoint p = waiting.back();
        waiting.pop_back();
        if (!InClip(p.x, p.y)) continue;
        const auto at = PixelIndex(p.x, p.y, width_);
        if (seen[at] || pixels_[at] == PlainColour(border)) continue;
        seen[at] = true;
        pixels_[at] = PlainColour(colour);
        waiting.push_back({p.x - 1, p.y});
        waiting.push_back({p.x + 1, p.y});
        waiting.push_back({p.x, p.y - 1});
        waiting.push_back({p.x, p.y + 1});
    }
    return true;
}

void RecordingSurface::ClipToRectangle(int left, int top, int right, int bottom) {
    Note(Line("ClipToRectangle", left, top, right, bottom));
    ellipseClip_ = false;
    clipLeft_ = left;
    clipTop_ = top;
    clipRight_ = right;
    clipBottom_ = bottom;
}

void RecordingSurface::ClipToEllipse(int left, int top, int right, int bottom) {
    Note(Line("ClipToEllipse", left, top, right, bottom));
    ellipseClip_ = right > left && bottom > top;
    clipLeft_ = left;
    clipTop_ = top;
    clipRight_ = right;
    clipBottom_ = bottom;
}

void RecordingSurface::ClearClip() {
    Note("ClearClip");
    ellipseClip_ = false;
    clipLeft_ = 0;
    clipTop_ = 0;
    clipRight_ = width_;
    clipBottom_ = height_;
}

void RecordingSurface::CopyImage(Image& image) {
    Note("CopyImage");
    image.width = width_;
    image.height = height_;
    image.pixels.resize(pixels_.size());
    for (std::size_t i = 0; i < pixels_.size(); ++i) {
        const auto c = static_cast<std::uint32_t>(pixels_[i]);
        image.pixels[i] = 0xFF000000U | (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
    }
}

void RecordingSurface::PutImage(const Image& image) {
    Note(Line("PutImage", image.width, image.height));
    for (int y = 0; y < std::min(height_, image.height); ++y) {
        for (int x = 0; x < std::min(width_, image.width); ++x) {
            const std::uint32_t p = image.pixels[PixelIndex(x, y, image.width)];
            pixels_[PixelIndex(x, y, width_)] =
                static_cast<Colour>((p & 0xFF) << 16 | (p & 0xFF00) | (p >> 16 & 0xFF));
        }
    }
}

void RecordingSurface::Refresh() {
    Note("Refresh");
}

}  // namespace orvantis
