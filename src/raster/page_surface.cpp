#include "raster/page_surface.h"

#include <algorithm>

namespace orvantis {

namespace {

constexpr Colour kPaper = 0xFFFFFF;
constexpr int kLongestSide = 32767;

// The outline of a box runs through the middles of the pixels at its edge.
QRectF OutlineBox(int left, int top, int right, int bottom) {
    return {left + 0.5, top + 0.5, right - 1.0 - left, bottom - 1.0 - top};
}

// Brings a row's border pixels that lie within a run of the row beside it to the flood's colour.
void FloodBorder(const Image& picture, Image& beneath, const PixelRun& run, std::uint32_t fill,
                 std::uint32_t border) {
    if (run.y < 0 || run.y >= picture.height) return;
    const std::size_t start = static_cast<std::size_t>(run.y) * picture.width;
    for (int x = std::max(run.left, 0); x < std::min(run.right, picture.width); ++x) {
        if (picture.pixels[start + x] == border) beneath.pixels[start + x] = fill;
    }
}

}  // namespace

PageSurface::PageSurface(int width, int height, double dotsPerInch, PageFloods floods) {
    record_.width = std::clamp(width, 0, kLongestSide);
    record_.height = std::clamp(height, 0, kLongestSide);
    record_.dotsPerInch = dotsPerInch;
    if (floods == PageFloods::None) return;
    picture_ = std::make_unique<ImageSurface>(record_.width, record_.height, dotsPerInch);
    PageSurface::Clear(kPaper);
}

const PageRecord& PageSurface::Record() {
    EndLine();
    return record_;
}

SurfaceSize PageSurface::Size() const {
    return {record_.width, record_.height};
}

void PageSurface::Clear(Colour colour) {
    record_.items.clear();
    lineOpen_ = false;
    if (picture_ != nullptr) {
        picture_->Clear(colour);
        picture_->CopyImage(record_.beneath);
    } else if (PlainColour(colour) != kPaper) {
        QPainterPath whole;
        whole.addRect(0, 0, record_.width, record_.height);
        AddShape(whole, {FillKind::Solid, colour}, false);
        record_.items.back().clip = 0;
    }
}

void PageSurface::SetPen(const Pen& pen) {
    EndLine();
    pen_ = pen;
    if (picture_ != nullptr) picture_->SetPen(pen);
}

void PageSurface::SelectFont(const Font& font) {
    font_ = font;
    face_ = nullptr;
    if (picture_ != nullptr) picture_->SelectFont(font);
}

TextFace& PageSurface::Face() {
    if (face_ == nullptr) face_ = FindTextFace(font_, record_.dotsPerInch);
    return *face_;
}

// --- Items -----------------------------------------------------------------------------------

PageItem& PageSurface::AddItem(PageItem::Kind kind) {
    EndLine();
    PageItem& item = record_.items.emplace_back();
    item.kind = kind;
    item.clip = record_.clips.size() - 1;
    item.pen = pen_;
    return item;
}

void PageSurface::AddShape(const QPainterPath& path, const Brush& brush, bool outlined) {
    PageItem& item = AddItem(PageItem::Kind::Shape);
    item.path = path;
    item.brush = brush;
    item.outlined = outlined;
}

// True unless all of a line lies to one side of what may be drawn on.
bool PageSurface::MayShow(const PageItem& line) const {
    const PageClip& clip = record_.clips[line.clip];
    const PixelBox page = {0, 0, record_.width, record_.height};
    const PixelBox box = clip.kind == PageClip::Kind::None ? page : CommonBox(clip.box, page);
    const int reach = line.pen.width;
    const auto [left, right] =
        std::minmax_element(line.points.begin(), line.points.end(),
                            [](SurfacePoint a, SurfacePoint b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(line.points.begin(), line.points.end(),
                            [](SurfacePoint a, SurfacePoint b) { return a.y < b.y; });
    return right->x + reach >= box.left && left->x - reach <= box.right &&
           bottom->y + reach >= box.top && top->y - reach <= box.bottom;
}

void PageSurface::EndLine() {
    if (!lineOpen_) return;
    lineOpen_ = false;
    PageItem& line = record_.items.back();
    if (line.points.size() < 2 || !MayShow(line)) {
        record_.items.pop_back();
    } else {
        line.points.shrink_to_fit();
    }
}

// --- Lines and pixels ------------------------------------------------------------------------

void PageSurface::MoveTo(int x, int y) {
    EndLine();
    current_ = {x, y};
    if (picture_ != nullptr) picture_->MoveTo(x, y);
}

void PageSurface::LineTo(int x, int y) {
    if (picture_ != nullptr) picture_->LineTo(x, y);
    const bool moves = x != current_.x || y != current_.y;
    if (moves && !lineOpen_) {
        AddItem(PageItem::Kind::Line).points.push_back(current_);
        lineOpen_ = true;
    }
    if (moves) record_.items.back().points.push_back({x, y});
    current_ = {x, y};
}

void PageSurface::SetPixel(int x, int y) {
    if (picture_ != nullptr) picture_->SetPixel(x, y);
    // On a page a line reaches its end, so the pixel that closes it is there already.
    const bool closesLine =
        lineOpen_ && pen_.dash == LineDash::Solid && x == current_.x && y == current_.y;
    if (closesLine) return;
    AddSinglePixel(x, y, x + 1, y + 1);
}

Colour PageSurface::GetPixel(int x, int y) {
    return picture_ != nullptr ? picture_->GetPixel(x, y) : -1;
}

// --- Shapes ----------------------------------------------------------------------------------

// A box of one pixel has no outline that a painter could follow.
bool PageSurface::AddSinglePixel(int left, int top, int right, int bottom) {
    if (right - left != 1 || bottom - top != 1) return false;
    QPainterPath pixel;
    pixel.addRect(left, top, 1, 1);
    AddShape(pixel, {FillKind::Solid, pen_.colour}, false);
    return true;
}

void PageSurface::Rectangle(int left, int top, int right, int bottom, const Brush& brush) {
    if (picture_ != nullptr) picture_->Rectangle(left, top, right, bottom, brush);
    if (right <= left || bottom <= top || AddSinglePixel(left, top, right, bottom)) return;
    QPainterPath path;
    path.addRect(OutlineBox(left, top, right, bottom));
    AddShape(path, brush, true);
}

void PageSurface::Ellipse(int left, int top, int right, int bottom, const Brush& brush) {
    if (picture_ != nullptr) picture_->Ellipse(left, top, right, bottom, brush);
    if (right <= left || bottom <= top || AddSinglePixel(left, top, right, bottom)) return;
    QPainterPath path;
    path.addEllipse(OutlineBox(left, top, right, bottom));
    AddShape(path, brush, true);
}

void PageSurface::Arc(int left, int top, int right, int bottom, double startDegrees,
                      double spanDegrees) {
    if (picture_ != nullptr) picture_->Arc(left, top, right, bottom, startDegrees, spanDegrees);
    if (right <= left || bottom <= top) return;
    const QRectF box = OutlineBox(left, top, right, bottom);
    QPainterPath path;
    path.arcMoveTo(box, startDegrees);
    path.arcTo(box, startDegrees, std::clamp(spanDegrees, -360.0, 360.0));
    AddShape(path, {}, true);
}

void PageSurface::Polygon(const std::vector<SurfacePoint>& points, const Brush& brush,
                          bool outline) {
    if (picture_ != nullptr) picture_->Polygon(points, brush, outline);
    if (points.empty()) return;
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    path.moveTo(points.front().x + 0.5, points.front().y + 0.5);
    for (const SurfacePoint& point : points) path.lineTo(point.x + 0.5, point.y + 0.5);
    path.closeSubpath();
    AddShape(path, brush, outline);
}

// --- Text ------------------------------------------------------------------------------------

void PageSurface::TextOut(int x, int y, std::string_view text, TextAlign align) {
    if (picture_ != nullptr) picture_->TextOut(x, y, text, align);
    TextFace& face = Face();
    if (align != TextAlign::Left) {
        const int width = TextWidth(face, text);
        x -= align == TextAlign::Centre ? width / 2 : width;
    }
    PageItem& item = AddItem(PageItem::Kind::Text);
    item.face = &face;
    for (const char letter : text) {
        const auto byte = static_cast<std::uint8_t>(letter);
        item.glyphs.push_back({x, y + face.ascent, byte});
        x += MaskOf(face, byte).advance;
    }
}

SurfaceSize PageSurface::TextExtent(std::string_view text) {
    return {TextWidth(Face(), text), Face().height};
}

// --- Floods, clips and pictures --------------------------------------------------------------

bool PageSurface::FloodFill(int x, int y, Colour colour, Colour border) {
    if (picture_ == nullptr) return false;
    EndLine();
    std::vector<PixelRun> painted;
    if (!picture_->FloodRuns(x, y, colour, border, painted)) return false;

    Image& beneath = record_.beneath;
    const std::uint32_t fill = PixelOf(colour);
    const std::uint32_t edge = PixelOf(border);
    const Image& picture = picture_->Pixels();
    for (const PixelRun& run : painted) {
        const auto row =
            beneath.pixels.begin() + static_cast<std::ptrdiff_t>(run.y) * beneath.width;
        std::fill(row + run.left, row + run.right, fill);
        FloodBorder(picture, beneath, {run.y, run.left - 1, run.right + 1}, fill, edge);
        FloodBorder(picture, beneath, {run.y - 1, run.left, run.right}, fill, edge);
        FloodBorder(picture, beneath, {run.y + 1, run.left, run.right}, fill, edge);
    }
    return true;
}

void PageSurface::SetClip(const PageClip& clip) {
    EndLine();
    const PageClip& now = record_.clips.back();
    const bool same = now.kind == clip.kind && now.box.left == clip.box.left &&
                      now.box.top == clip.box.top && now.box.right == clip.box.right &&
                      now.box.bottom == clip.box.bottom;
    if (!same) record_.clips.push_back(clip);
}

void PageSurface::ClipToRectangle(int left, int top, int right, int bottom) {
    if (picture_ != nullptr) picture_->ClipToRectangle(left, top, right, bottom);
    SetClip({PageClip::Kind::Rectangle, {left, top, right, bottom}});
}

void PageSurface::ClipToEllipse(int left, int top, int right, int bottom) {
    if (picture_ != nullptr) picture_->ClipToEllipse(left, top, right, bottom);
    SetClip({PageClip::Kind::Ellipse, {left, top, right, bottom}});
}

void PageSurface::ClearClip() {
    if (picture_ != nullptr) picture_->ClearClip();
    SetClip({});
}

void PageSurface::CopyImage(Image& image) {
    if (picture_ != nullptr) {
        picture_->CopyImage(image);
    } else {
        image = {};
    }
}

void PageSurface::PutImage(const Image& image) {
    if (picture_ == nullptr) return;
    record_.items.clear();
    lineOpen_ = false;
    picture_->PutImage(image);
    picture_->CopyImage(record_.beneath);
}

}  // namespace orvantis
