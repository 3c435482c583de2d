#include "raster/image_surface.h"

#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QRegion>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "raster/blend.h"
#include "raster/picture_memory.h"
#include "raster/smooth_arc.h"
#include "raster/wide_line.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

// Distance between the lines of the cross hatch.
constexpr int kHatchPeriod = 8;

// The box with `pixels` more on each side; an empty one stays empty.
PixelBox Grown(const PixelBox& box, int pixels) {
    if (box.right <= box.left || box.bottom <= box.top) return box;
    return {box.left - pixels, box.top - pixels, box.right + pixels, box.bottom + pixels};
}

bool Holds(const PixelBox& box, SurfacePoint point) {
    return point.x >= box.left && point.x < box.right && point.y >= box.top && point.y < box.bottom;
}

// True for one of the eight pixels around a pixel of the picture.
bool IsBeside(SurfacePoint pixel, SurfacePoint other) {
    const bool near = other.x >= pixel.x - 1 && other.x <= pixel.x + 1 && other.y >= pixel.y - 1 &&
                      other.y <= pixel.y + 1;
    return near && (other.x != pixel.x || other.y != pixel.y);
}

PixelBox WholeBox(const Image& image) {
    return {0, 0, image.width, image.height};
}

QPen WidePen(const Pen& pen, double dashOffset) {
    const QRgb rgb = PixelOf(pen.colour);
    QPen result(QColor(rgb), pen.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (pen.dash != LineDash::Solid) {
        result.setCapStyle(Qt::FlatCap);
        const std::vector<double>& lengths = WideDashes(pen.dash);
        result.setDashPattern(QList<qreal>(lengths.begin(), lengths.end()));
        result.setDashOffset(dashOffset);
    }
    return result;
}

QRegion RegionOf(const Clip& clip) {
    const PixelBox& box = clip.box;
    if (clip.rows.empty()) {
        return {box.left, box.top, box.right - box.left, box.bottom - box.top};
    }
    std::vector<QRect> rows;
    for (int y = box.top; y < box.bottom; ++y) {
        const RowSpan row = ClipRow(clip, y);
        if (row.right > row.left) rows.emplace_back(row.left, y, row.right - row.left, 1);
    }
    QRegion region;
    region.setRects(rows.data(), static_cast<int>(rows.size()));
    return region;
}

}  // namespace

ImageSurface::ImageSurface(int width, int height, double dotsPerInch) {
    Resize(width, height, dotsPerInch);
}

void ImageSurface::Resize(int width, int height, double dotsPerInch) {
    wideLine_.clear();
    image_.width = std::clamp(width, 0, 32767);
    image_.height = std::clamp(height, 0, 32767);
    const std::size_t count = static_cast<std::size_t>(image_.width) * image_.height;
    ReservePixels(image_, count);
    image_.pixels.assign(count, PixelOf(0));
    dotsPerInch_ = dotsPerInch;
    face_ = nullptr;
    clip_ = RectangleClip(WholeBox(image_), image_.width, image_.height);
}

QImage ImageSurface::View() {
    FlushWideLine();
    return {reinterpret_cast<const uchar*>(image_.pixels.data()), image_.width, image_.height,
            static_cast<qsizetype>(image_.width) * 4, QImage::Format_RGB32};
}

SurfaceSize ImageSurface::Size() const {
    return {image_.width, image_.height};
}

void ImageSurface::Clear(Colour colour) {
    wideLine_.clear();
    std::fill(image_.pixels.begin(), image_.pixels.end(), PixelOf(colour));
}

void ImageSurface::SetPen(const Pen& pen) {
    FlushWideLine();
    pen_ = pen;
    ink_ = PixelOf(pen.colour);
    dashStep_ = 0;
    wideDashOffset_ = 0;
}

void ImageSurface::SelectFont(const Font& font) {
    font_ = font;
    face_ = nullptr;
}

// True for the pen that hard outlines are made of.
bool ImageSurface::PenIsFine() const {
    return pen_.width <= 1 && !pen_.smooth;
}

// --- Lines -----------------------------------------------------------------------------------

void ImageSurface::MoveTo(int x, int y) {
    FlushWideLine();
    current_ = {x, y};
    dashStep_ = 0;
    wideDashOffset_ = 0;
}

void ImageSurface::LineTo(int x, int y) {
    const SurfacePoint from = current_;
    const SurfacePoint to = {x, y};
    current_ = to;
    if (PenIsFine() && InClip(clip_, from.x, from.y) && IsBeside(from, to)) {
        // Most lines of a fine map go to the next pixel: such a line is its first one.
        const bool shows = pen_.dash == LineDash::Solid || DashWalk(pen_.dash, dashStep_).Next();
        if (shows) Row(from.y)[from.x] = ink_;
        ++dashStep_;
        return;
    }
    if (pen_.width > 1) {
        // Painted in one piece later, so that its joints and dashes are those of one line.
        if (wideLine_.empty()) wideLine_.push_back(from);
        wideLine_.push_back(to);
        return;
    }
    const bool level = from.x == to.x || from.y == to.y;
    if (pen_.smooth && !level) {
        // A smooth line touches the pixels on both sides of its path.
        const LineWalk walk = WalkLine(from, to, Grown(clip_.box, 1), LineRounding::Down);
        const PixelBox inner = Grown(clip_.box, -1);
        if (pen_.dash == LineDash::Solid && clip_.rows.empty() && Holds(inner, from) &&
            Holds(inner, to)) {
            DrawSmoothLine(walk);
        } else {
            DrawClippedSmoothLine(walk);
        }
        dashStep_ += walk.total;
        return;
    }
    // A smooth line along a row or a column has no pixel to share its ink with: it is a hard one.
    const LineWalk walk = WalkLine(from, to, clip_.box, LineRounding::Nearest);
    const bool whole =
        clip_.rows.empty() || (DeepInClip(clip_, from.x, from.y) && DeepInClip(clip_, to.x, to.y));
    if (pen_.dash == LineDash::Solid && whole) {
        DrawHardLine(walk);
    } else {
        DrawClippedLine(walk);
    }
    dashStep_ += walk.total;
}

// A solid line in a rectangle, or deep in an ellipse: every pixel of the walk is drawn.
void ImageSurface::DrawHardLine(const LineWalk& walk) {
    if (walk.count == 0) return;
    std::uint32_t* pixel = Row(walk.y) + walk.x;
    const std::ptrdiff_t forward = walk.forwardX + std::ptrdiff_t{walk.forwardY} * image_.width;
    const std::ptrdiff_t aside = walk.asideX + std::ptrdiff_t{walk.asideY} * image_.width;
    int error = walk.error;
    for (int left = walk.count; left > 0; --left) {
        *pixel = ink_;
        if (left == 1) break;  // the place after the last may lie outside the memory
        pixel += forward;
        error += walk.rise;
        if (error >= walk.run) {
            error -= walk.run;
            pixel += aside;
        }
    }
}

// A dashed line, or one in an ellipse.
void ImageSurface::DrawClippedLine(LineWalk walk) {
    DashWalk dash(pen_.dash, dashStep_ + walk.skipped);
    for (int left = walk.count; left > 0; --left) {
        if (dash.Next() && InClip(clip_, walk.x, walk.y)) Row(walk.y)[walk.x] = ink_;
        NextPixel(walk);
    }
}

// At each step the ink is shared by the two pixels that the path runs between, by its distance
// from them (X. Wu, An efficient antialiasing technique, SIGGRAPH 1991). A solid line deep in a
// rectangle: all of it is drawn.
void ImageSurface::DrawSmoothLine(LineWalk walk) {
    if (walk.count == 0) return;
    const SmoothShare shareOf(walk);
    const std::ptrdiff_t forward = walk.forwardX + std::ptrdiff_t{walk.forwardY} * image_.width;
    const std::ptrdiff_t aside = walk.asideX + std::ptrdiff_t{walk.asideY} * image_.width;
    std::uint32_t* pixel = Row(walk.y) + walk.x;
    int error = walk.error;
    for (int left = walk.count; left > 0; --left) {
        const std::uint32_t further = shareOf(error);
        if (further == 0) {
            *pixel = ink_;
        } else {
            *pixel = Blend(*pixel, ink_, 256 - further);
            pixel[aside] = Blend(pixel[aside], ink_, further);
        }
        if (left == 1) break;  // the place after the last may lie outside the memory
        pixel += forward;
        error += walk.rise;
        if (error >= walk.run) {
            error -= walk.run;
            pixel += aside;
        }
    }
}

// The same with dashes, or where the clip may cut it.
void ImageSurface::DrawClippedSmoothLine(LineWalk walk) {
    const auto blend = [this](int x, int y, std::uint32_t weight) {
        if (weight == 0 || !InClip(clip_, x, y)) return;
        std::uint32_t& pixel = Row(y)[x];
        pixel = weight == 256 ? ink_ : Blend(pixel, ink_, weight);
    };
    const SmoothShare shareOf(walk);
    DashWalk dash(pen_.dash, dashStep_ + walk.skipped);
    for (int left = walk.count; left > 0; --left) {
        if (dash.Next()) {
            const std::uint32_t further = shareOf(walk.error);
            blend(walk.x, walk.y, 256 - further);
            blend(walk.x + walk.asideX, walk.y + walk.asideY, further);
        }
        NextPixel(walk);
    }
}

template <typename Work>
void ImageSurface::WithPainter(const Work& work) {
    if (clip_.box.right <= clip_.box.left) return;
    QImage target(reinterpret_cast<uchar*>(image_.pixels.data()), image_.width, image_.height,
                  static_cast<qsizetype>(image_.width) * 4, QImage::Format_RGB32);
    QPainter painter(&target);
    painter.setClipRegion(RegionOf(clip_));
    painter.setRenderHint(QPainter::Antialiasing, pen_.smooth);
    // A line through a pixel runs through the pixel's middle.
    painter.translate(0.5, 0.5);
    work(painter);
}

void ImageSurface::PaintWideLine() {
    if (pen_.smooth && pen_.dash == LineDash::Solid && pen_.width <= kWidestSmoothLine) {
        DrawWideLine(image_, clip_, wideLine_, pen_.width, ink_);
        wideLine_.clear();
        return;
    }
    QPolygonF path;
    double length = 0;
    for (const SurfacePoint& point : wideLine_) {
        const QPointF place(point.x, point.y);
        if (!path.empty())
            length += std::hypot(place.x() - path.back().x(), place.y() - path.back().y());
        path << place;
    }
    wideLine_.clear();
    WithPainter([&](QPainter& painter) {
        painter.setPen(WidePen(pen_, wideDashOffset_));
        painter.drawPolyline(path);
    });
    wideDashOffset_ += length / pen_.width;
}

// --- Pixels ----------------------------------------------------------------------------------

void ImageSurface::SetPixel(int x, int y) {
    FlushWideLine();
    if (InClip(clip_, x, y)) Row(y)[x] = ink_;
}

Colour ImageSurface::GetPixel(int x, int y) {
    FlushWideLine();
    if (x < 0 || y < 0 || x >= image_.width || y >= image_.height) return -1;
    return ColourOf(Row(y)[x]);
}

// --- Shapes ----------------------------------------------------------------------------------

// Paints the pixels left to right (exclusive) of a row with the brush.
void ImageSurface::FillRow(int y, int left, int right, const Brush& brush) {
    const RowSpan row = ClipRow(clip_, y);
    left = std::max(left, row.left);
    right = std::min(right, row.right);
    if (right <= left || brush.kind == FillKind::None) return;
    const std::uint32_t pixel = PixelOf(brush.colour);
    if (brush.kind == FillKind::Solid) {
        std::fill(Row(y) + left, Row(y) + right, pixel);
        return;
    }
    std::uint32_t* pixels = Row(y);
    for (int x = left; x < right; ++x) {
        if ((x + y) % kHatchPeriod == 0 || (x - y) % kHatchPeriod == 0) pixels[x] = pixel;
    }
}

// Draws a closed line through the points with the pen.
void ImageSurface::DrawLoop(const std::vector<SurfacePoint>& points) {
    if (points.empty()) return;
    MoveTo(points.back().x, points.back().y);
    for (const SurfacePoint& point : points) LineTo(point.x, point.y);
    FlushWideLine();
}

void ImageSurface::Rectangle(int left, int top, int right, int bottom, const Brush& brush) {
    FlushWideLine();
    if (right <= left || bottom <= top) return;
    const PixelBox box = CommonBox({left, top, right, bottom}, clip_.box);
    for (int y = box.top; y < box.bottom; ++y) FillRow(y, left, right, brush);
    const SurfacePoint kept = current_;
    if (right - left == 1 && bottom - top == 1) {
        SetPixel(left, top);
    } else {
        DrawLoop({{left, top}, {right - 1, top}, {right - 1, bottom - 1}, {left, bottom - 1}});
    }
    current_ = kept;
}

void ImageSurface::Ellipse(int left, int top, int right, int bottom, const Brush& brush) {
    FlushWideLine();
    if (right <= left || bottom <= top) return;
    const PixelBox box = {left, top, right, bottom};
    const PixelBox seen = CommonBox(box, clip_.box);
    for (int y = seen.top; y < seen.bottom; ++y) {
        const RowSpan row = EllipseRow(box, y);
        FillRow(y, row.left, row.right, brush);
    }
    if (PenIsFine()) {
        DrawRing(box);
    } else {
        WithPainter([&](QPainter& painter) {
            painter.setPen(WidePen(pen_, 0));
            painter.drawEllipse(QRectF(left, top, right - left - 1, bottom - top - 1));
        });
    }
}

// The edge of an ellipse in hard pixels: those inside that have a neighbour outside. Such an edge
// holds a flood.
void ImageSurface::DrawRing(const PixelBox& box) {
    const Brush ink = {FillKind::Solid, pen_.colour};
    const PixelBox seen = CommonBox(box, clip_.box);
    for (int y = seen.top; y < seen.bottom; ++y) {
        const RowSpan row = EllipseRow(box, y);
        const RowSpan above = EllipseRow(box, y - 1);
        const RowSpan below = EllipseRow(box, y + 1);
        const int innerLeft = std::max({row.left + 1, above.left, below.left});
        const int innerRight = std::min({row.right - 1, above.right, below.right});
        const bool open =
            innerRight > innerLeft && above.right > above.left && below.right > below.left;
        FillRow(y, row.left, open ? innerLeft : row.right, ink);
        if (open) FillRow(y, innerRight, row.right, ink);
    }
}

void ImageSurface::Arc(int left, int top, int right, int bottom, double startDegrees,
                       double spanDegrees) {
    FlushWideLine();
    if (right <= left || bottom <= top) return;
    spanDegrees = std::clamp(spanDegrees, -360.0, 360.0);
    const double radiusX = (right - 1.0 - left) / 2;
    const double radiusY = (bottom - 1.0 - top) / 2;
    const bool dashed = pen_.dash != LineDash::Solid;
    if (pen_.smooth && pen_.width <= (dashed ? 1 : kWidestSmoothLine)) {
        DrawSmoothArc(image_, clip_,
                      {left + radiusX, top + radiusY, radiusX, radiusY, startDegrees, spanDegrees},
                      std::max(pen_.width, 1), pen_.dash, ink_);
        return;
    }
    if (!PenIsFine()) {
        WithPainter([&](QPainter& painter) {
            painter.setPen(WidePen(pen_, 0));
            painter.drawArc(QRectF(left, top, right - left - 1, bottom - top - 1),
                            static_cast<int>(std::lround(startDegrees * 16)),
                            static_cast<int>(std::lround(spanDegrees * 16)));
        });
        return;
    }

    // Points along the curve, about two pixels from one to the next.
    const double turn = std::abs(spanDegrees) * DegToRad;
    const int steps =
        std::clamp(static_cast<int>(std::ceil(std::max(radiusX, radiusY) * turn / 2)), 1, 100000);
    const SurfacePoint kept = current_;
    for (int i = 0; i <= steps; ++i) {
        const double angle = startDegrees + spanDegrees * i / steps;
        const int x = static_cast<int>(std::lround(left + radiusX + radiusX * CosD(angle)));
        const int y = static_cast<int>(std::lround(top + radiusY - radiusY * SinD(angle)));
        if (i == 0) {
            MoveTo(x, y);
        } else {
            LineTo(x, y);
        }
    }
    if (DashWalk(pen_.dash, dashStep_).Next()) SetPixel(current_.x, current_.y);
    current_ = kept;
}

void ImageSurface::Polygon(const std::vector<SurfacePoint>& points, const Brush& brush,
                           bool outline) {
    FlushWideLine();

    // Row by row: the pixels between the first and second crossing of the outline with the row,
    // the third and fourth, and so on.
    std::vector<double> crossings;
    const bool filled = brush.kind != FillKind::None && points.size() > 2;
    for (int y = clip_.box.top; filled && y < clip_.box.bottom; ++y) {
        crossings.clear();
        SurfacePoint a = points.back();
        for (const SurfacePoint& b : points) {
            if ((a.y <= y) != (b.y <= y)) {
                const double share =
                    (static_cast<double>(y) - a.y) / (static_cast<double>(b.y) - a.y);
                crossings.push_back(a.x + share * (static_cast<double>(b.x) - a.x));
            }
            a = b;
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            FillRow(y, static_cast<int>(std::ceil(crossings[i])),
                    static_cast<int>(std::ceil(crossings[i + 1])), brush);
        }
    }
    if (!outline) return;
    const SurfacePoint kept = current_;
    DrawLoop(points);
    current_ = kept;
}

// --- Text ------------------------------------------------------------------------------------

void ImageSurface::TextOut(int x, int y, std::string_view text, TextAlign align) {
    FlushWideLine();
    if (face_ == nullptr) face_ = FindTextFace(font_, dotsPerInch_);
    if (align != TextAlign::Left) {
        const int width = TextWidth(*face_, text);
        x -= align == TextAlign::Centre ? width / 2 : width;
    }
    for (const char byte : text) {
        const GlyphMask& mask = MaskOf(*face_, static_cast<std::uint8_t>(byte));
        DrawMask(mask, x + mask.left, y + face_->ascent + mask.top);
        x += mask.advance;
    }
}

void ImageSurface::DrawMask(const GlyphMask& mask, int x, int y) {
    for (int line = 0; line < mask.height; ++line) {
        const RowSpan row = ClipRow(clip_, y + line);
        const std::uint8_t* cover = mask.cover.data() + static_cast<std::size_t>(line) * mask.width;
        const int end = std::min(mask.width, row.right - x);
        for (int i = std::max(0, row.left - x); i < end; ++i) {
            if (cover[i] == 0) continue;
            std::uint32_t& pixel = Row(y + line)[x + i];
            // 255 is all of it.
            pixel = Blend(pixel, ink_, cover[i] + (cover[i] >> 7));
        }
    }
}

SurfaceSize ImageSurface::TextExtent(std::string_view text) {
    if (face_ == nullptr) face_ = FindTextFace(font_, dotsPerInch_);
    return {TextWidth(*face_, text), face_->height};
}

// --- Floods, clips and pictures --------------------------------------------------------------

bool ImageSurface::FloodFill(int x, int y, Colour colour, Colour border) {
    FlushWideLine();
    return FloodImage(image_, clip_, x, y, PixelOf(colour), PixelOf(border));
}

bool ImageSurface::FloodRuns(int x, int y, Colour colour, Colour border,
                             std::vector<PixelRun>& painted) {
    FlushWideLine();
    return FloodImage(image_, clip_, x, y, PixelOf(colour), PixelOf(border), &painted);
}

void ImageSurface::ClipToRectangle(int left, int top, int right, int bottom) {
    FlushWideLine();
    clip_ = RectangleClip({left, top, right, bottom}, image_.width, image_.height);
}

void ImageSurface::ClipToEllipse(int left, int top, int right, int bottom) {
    FlushWideLine();
    clip_ = EllipseClip({left, top, right, bottom}, image_.width, image_.height);
}

void ImageSurface::ClearClip() {
    FlushWideLine();
    clip_ = RectangleClip(WholeBox(image_), image_.width, image_.height);
}

void ImageSurface::CopyImage(Image& image) {
    FlushWideLine();
    ReservePixels(image, image_.pixels.size());
    image = image_;
}

void ImageSurface::PutImage(const Image& image) {
    FlushWideLine();
    const int width = std::min(image.width, image_.width);
    const int height = std::min(image.height, image_.height);
    if (width <= 0 || height <= 0) return;
    const std::size_t all = static_cast<std::size_t>(image.width) * image.height;
    if (image.pixels.size() < all) return;
    if (image.width == image_.width) {
        std::memcpy(image_.pixels.data(), image.pixels.data(),
                    static_cast<std::size_t>(width) * height * sizeof(std::uint32_t));
        return;
    }
    for (int y = 0; y < height; ++y) {
        std::copy_n(image.pixels.data() + static_cast<std::size_t>(y) * image.width, width, Row(y));
    }
}

void ImageSurface::Refresh() {
    FlushWideLine();
    if (onRefresh) onRefresh();
}

}  // namespace orvantis
