#include "raster/page_file.h"

#include <QFont>
#include <QGlyphRun>
#include <QLocale>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "raster/glyph_outline.h"
#include "raster/picture_file.h"
#include "raster/qt_gui.h"
#include "raster/whole_file.h"

namespace orvantis {

namespace {

constexpr double kPointsPerInch = 72;
constexpr int kHatchPeriod = 8;  // distance between the lines of the cross hatch, pixels

QPen PagePen(const Pen& pen) {
    const bool solid = pen.dash == LineDash::Solid;
    QPen result(QtColour(pen.colour), pen.width, Qt::SolidLine, solid ? Qt::RoundCap : Qt::FlatCap,
                Qt::RoundJoin);
    if (solid) return result;
    QList<qreal> pattern;  // in widths of the pen
    for (const double length : DashLengths(pen)) pattern.append(length / pen.width);
    result.setDashPattern(pattern);
    return result;
}

void SetPageClip(QPainter& painter, const PageClip& clip) {
    const QRectF box(clip.box.left, clip.box.top, clip.box.right - clip.box.left,
                     clip.box.bottom - clip.box.top);
    QPainterPath path;
    switch (clip.kind) {
        case PageClip::Kind::None:
            painter.setClipping(false);
            return;
        case PageClip::Kind::Rectangle:
            path.addRect(box);
            break;
        case PageClip::Kind::Ellipse:
            path.addEllipse(box);
            break;
    }
    painter.setClipPath(path);
}

void DrawShape(QPainter& painter, const PageItem& item) {
    if (item.brush.kind == FillKind::Solid) {
        painter.fillPath(item.path, QtColour(item.brush.colour));
    } else if (item.brush.kind == FillKind::DiagonalCross) {
        painter.save();
        painter.setClipPath(item.path, Qt::IntersectClip);
        painter.strokePath(HatchLines(item.path.boundingRect()),
                           QPen(QtColour(item.brush.colour), 1));
        painter.restore();
    }
    if (item.outlined) painter.strokePath(item.path, PagePen(item.pen));
}

// The same font as one of the system's, since only those are embedded in files; one that isn't
// valid if the system has another or none of the name.
QRawFont SystemFont(const QRawFont& font) {
    QFont wanted(font.familyName());
    wanted.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize()))));
    wanted.setWeight(static_cast<QFont::Weight>(font.weight()));
    wanted.setStyle(font.style());
    QRawFont found = QRawFont::fromFont(wanted);
    // The table "head" holds a checksum of the whole font.
    if (!found.isValid() || found.fontTable("head") != font.fontTable("head")) return {};
    found.setPixelSize(font.pixelSize());
    return found;
}

// Letters that follow one another in the same font are one run, so that a text stays one text.
void DrawText(QPainter& painter, const PageItem& item) {
    const QColor colour = QtColour(item.pen.colour);
    painter.setPen(colour);
    QRawFont source;  // of the run's letters
    QRawFont font;    // the same as the run has it
    QList<quint32> numbers;
    QList<QPointF> places;
    const auto flush = [&] {
        if (!numbers.isEmpty()) {
            QGlyphRun run;
            run.setRawFont(font);
            run.setGlyphIndexes(numbers);
            run.setPositions(places);
            painter.drawGlyphRun(QPointF(0, 0), run);
        }
        numbers.clear();
        places.clear();
    };
    for (const PageGlyph& glyph : item.glyphs) {
        const GlyphOutline outline = OutlineOf(*item.face, glyph.byte);
        if (outline.number != 0 && outline.font != source) {
            flush();
            source = outline.font;
            font = SystemFont(source);
        }
        if (outline.number == 0 || !font.isValid()) {
            painter.fillPath(outline.path.translated(glyph.x, glyph.y), colour);
            continue;
        }
        numbers.append(outline.number);
        places.append(QPointF(glyph.x, glyph.y));
    }
    flush();
}

void DrawLine(QPainter& painter, const PageItem& item) {
    QPolygonF path;
    path.reserve(static_cast<qsizetype>(item.points.size()));
    for (const SurfacePoint& point : item.points) path << QPointF(point.x + 0.5, point.y + 0.5);
    painter.setPen(PagePen(item.pen));
    painter.drawPolyline(path);
}

bool WritePdf(QIODevice& file, const PageRecord& page) {
    const double scale = kPointsPerInch / page.dotsPerInch;
    QPdfWriter writer(&file);
    writer.setCreator(QStringLiteral("Orvantis"));
    writer.setTitle(QStringLiteral("Orvantis"));
    writer.setPageSize(QPageSize(QSizeF(page.width * scale, page.height * scale), QPageSize::Point,
                                 QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    if (!painter.begin(&writer)) return false;
    // The writer makes pages of whole points; what is drawn fills them to the edge all the same.
    const QSize points = writer.pageLayout().fullRectPoints().size();
    const double unit = writer.resolution() / kPointsPerInch;
    painter.scale(points.width() * unit / page.width, points.height() * unit / page.height);
    DrawPage(painter, page);
    return painter.end();
}

// --- SVG -------------------------------------------------------------------------------------

// A number with no more digits than can be seen: hundredths of a pixel.
QByteArray Number(double value) {
    const double held = std::round(value * 100) / 100;
    return QByteArray::number(held == 0 ? 0.0 : held, 'f', QLocale::FloatingPointShortest);
}

QByteArray HexColour(Colour colour) {
    return QtColour(colour).name().toLatin1();
}

QByteArray PathData(const QPainterPath& path) {
    QByteArray data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element& element = path.elementAt(i);
        const char* command = "";
        if (element.isMoveTo()) command = "M";
        if (element.isLineTo()) command = "L";
        if (element.isCurveTo()) command = "C";
        data += data.isEmpty() || *command != '\0' ? command : " ";
        data += Number(element.x) + " " + Number(element.y);
    }
    return data;
}

// Whole pixels, each after the first relative to the one before: a coast takes half the bytes.
QByteArray LineData(const std::vector<SurfacePoint>& points) {
    QByteArray data;
    SurfacePoint before;
    for (const SurfacePoint& point : points) {
        if (data.isEmpty()) {
            data = "M" + Number(point.x + 0.5) + " " + Number(point.y + 0.5) + "l";
        } else {
            const QByteArray x = QByteArray::number(point.x - before.x);
            const QByteArray y = QByteArray::number(point.y - before.y);
            if (!data.endsWith('l')) data += " ";
            data += x + (y.startsWith('-') ? "" : " ") + y;
        }
        before = point;
    }
    return data;
}

QByteArray StrokeAttributes(const Pen& pen) {
    QByteArray text = " stroke=\"" + HexColour(pen.colour) + "\"";
    if (pen.width != 1) text += " stroke-width=\"" + QByteArray::number(pen.width) + "\"";
    const std::vector<double> dashes = DashLengths(pen);
    if (dashes.empty()) return text;
    text += " stroke-linecap=\"butt\" stroke-dasharray=\"";
    for (const double length : dashes) text += Number(length) + " ";
    text.back() = '"';
    return text;
}

// Writes a page's items. Shapes that others refer to, letters and clips, stand before their first
// use.
class SvgWriter {
  public:
    explicit SvgWriter(const PageRecord& page) : page_(page) {}

    // The whole file; empty if the picture beneath can't be written as PNG.
    QByteArray Write() {
        const QByteArray width = QByteArray::number(page_.width);
        const QByteArray height = QByteArray::number(page_.height);
        svg_ =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" "
            "xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\" width=\"" +
            width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + " " + height +
            "\">\n<title>Orvantis</title>\n";
        if (!page_.beneath.pixels.empty() && !WriteBeneath(width, height)) return {};
        svg_ += "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
        for (const PageItem& item : page_.items) WriteItem(item);
        SetClip(0);
        svg_ += "</g>\n</svg>\n";
        return std::move(svg_);
    }

  private:
    bool WriteBeneath(const QByteArray& width, const QByteArray& height) {
        const std::string png = PngBytes(page_.beneath);
        if (png.empty()) return false;
        svg_ += "<image width=\"" + width + "\" height=\"" + height +
                "\" preserveAspectRatio=\"none\" style=\"image-rendering:pixelated\" "
                "xlink:href=\"data:image/png;base64," +
                QByteArray::fromStdString(png).toBase64() + "\"/>\n";
        return true;
    }

    // Items of one clip stand in one group.
    void SetClip(std::size_t number) {
        if (number == clip_) return;
        if (page_.clips[clip_].kind != PageClip::Kind::None) svg_ += "</g>\n";
        clip_ = number;
        const PageClip& clip = page_.clips[number];
        if (clip.kind == PageClip::Kind::None) return;
        QPainterPath path;
        const QRectF box(clip.box.left, clip.box.top, clip.box.right - clip.box.left,
                         clip.box.bottom - clip.box.top);
        if (clip.kind == PageClip::Kind::Rectangle) path.addRect(box);
        if (clip.kind == PageClip::Kind::Ellipse) path.addEllipse(box);
        svg_ += "<g" + ClipAttribute(path) + ">\n";
    }

    // Defines a clip and gives the attribute that refers to it.
    QByteArray ClipAttribute(const QPainterPath& path) {
        const QByteArray name = "c" + QByteArray::number(++clips_);
        svg_ += "<clipPath id=\"" + name + "\"><path d=\"" + PathData(path) +
                "\" clip-rule=\"evenodd\"/></clipPath>\n";
        return " clip-path=\"url(#" + name + ")\"";
    }

    void WriteItem(const PageItem& item) {
        SetClip(item.clip);
        switch (item.kind) {
            case PageItem::Kind::Line:
                svg_ += "<path" + StrokeAttributes(item.pen) + " d=\"" + LineData(item.points) +
                        "\"/>\n";
                break;
            case PageItem::Kind::Shape:
                WriteShape(item);
                break;
            case PageItem::Kind::Text:
                WriteText(item);
                break;
        }
    }

    void WriteShape(const PageItem& item) {
        if (item.brush.kind == FillKind::DiagonalCross) {
            const QByteArray clip = ClipAttribute(item.path);
            svg_ += "<path" + clip + StrokeAttributes({1, LineDash::Solid, item.brush.colour}) +
                    " d=\"" + PathData(HatchLines(item.path.boundingRect())) + "\"/>\n";
        }
        const bool filled = item.brush.kind == FillKind::Solid;
        if (!filled && !item.outlined) return;
        svg_ += "<path";
        if (filled) svg_ += " fill=\"" + HexColour(item.brush.colour) + "\" fill-rule=\"evenodd\"";
        if (item.outlined) svg_ += StrokeAttributes(item.pen);
        svg_ += " d=\"" + PathData(item.path) + "\"/>\n";
    }

    void WriteText(const PageItem& item) {
        svg_ += "<g fill=\"" + HexColour(item.pen.colour) + "\">";
        for (const PageGlyph& glyph : item.glyphs) {
            const QByteArray name = LetterName(*item.face, glyph.byte);
            if (name.isEmpty()) continue;
            svg_ += "<use xlink:href=\"#" + name + "\" x=\"" + QByteArray::number(glyph.x) +
                    "\" y=\"" + QByteArray::number(glyph.y) + "\"/>";
        }
        svg_ += "</g>\n";
    }

    // The name of a letter's shape, which is defined where it's first used; "" for one without.
    QByteArray LetterName(TextFace& face, std::uint8_t byte) {
        const auto [found, isNew] = letters_.try_emplace({&face, byte});
        if (!isNew) return found->second;
        const QByteArray data = PathData(OutlineOf(face, byte).path);
        if (data.isEmpty()) return {};
        found->second = "l" + QByteArray::number(static_cast<int>(letters_.size()));
        svg_ += "<defs><path id=\"" + found->second + "\" d=\"" + data + "\"/></defs>";
        return found->second;
    }

    const PageRecord& page_;
    QByteArray svg_;
    std::size_t clip_ = 0;
    int clips_ = 0;
    std::map<std::pair<const TextFace*, std::uint8_t>, QByteArray> letters_;
};

}  // namespace

std::vector<double> DashLengths(const Pen& pen) {
    static const std::vector<double> fine[] = {
        {}, {18, 6}, {3, 3}, {9, 6, 3, 6}, {9, 3, 3, 3, 3, 3}};
    if (pen.width <= 1) {
        const auto style = static_cast<std::size_t>(pen.dash);
        return style < std::size(fine) ? fine[style] : fine[0];
    }
    std::vector<double> lengths = WideDashes(pen.dash);
    for (double& length : lengths) length *= pen.width;
    return lengths;
}

QPainterPath HatchLines(const QRectF& box) {
    // Lines of equal x + y, and of equal x - y, whose sum or difference is a multiple of the
    // period.
    QPainterPath lines;
    const auto first = [](double value) {
        return static_cast<int>(std::ceil(value / kHatchPeriod)) * kHatchPeriod;
    };
    const double height = box.height();
    for (int sum = first(box.left() + box.top()); sum <= box.right() + box.bottom();
         sum += kHatchPeriod) {
        lines.moveTo(sum - box.top() + 0.5, box.top() + 0.5);
        lines.lineTo(sum - box.bottom() + 0.5, box.bottom() + 0.5);
    }
    for (int difference = first(box.left() - box.bottom()); difference <= box.right() - box.top();
         difference += kHatchPeriod) {
        lines.moveTo(difference + box.top() + 0.5, box.top() + 0.5);
        lines.lineTo(difference + box.top() + height + 0.5, box.bottom() + 0.5);
    }
    return lines;
}

void DrawPage(QPainter& painter, const PageRecord& page) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    const Image& beneath = page.beneath;
    if (!beneath.pixels.empty()) {
        painter.drawImage(0, 0,
                          QImage(reinterpret_cast<const uchar*>(beneath.pixels.data()),
                                 beneath.width, beneath.height,
                                 static_cast<qsizetype>(beneath.width) * 4, QImage::Format_RGB32));
    }
    std::size_t clip = 0;
    for (const PageItem& item : page.items) {
        if (item.clip != clip) SetPageClip(painter, page.clips[item.clip]);
        clip = item.clip;
        switch (item.kind) {
            case PageItem::Kind::Line:
                DrawLine(painter, item);
                break;
            case PageItem::Kind::Shape:
                DrawShape(painter, item);
                break;
            case PageItem::Kind::Text:
                DrawText(painter, item);
                break;
        }
    }
    painter.setClipping(false);
}

bool SavePdf(std::string_view nativePath, const PageRecord& page) {
    if (page.width < 1 || page.height < 1) return false;
    EnsureQtGui();
    return WriteWholeFile(nativePath, [&](QIODevice& file) { return WritePdf(file, page); });
}

bool SaveSvg(std::string_view nativePath, const PageRecord& page) {
    if (page.width < 1 || page.height < 1) return false;
    const QByteArray svg = SvgWriter(page).Write();
    if (svg.isEmpty()) return false;
    return WriteWholeFile(nativePath,
                          [&](QIODevice& file) { return file.write(svg) == svg.size(); });
}

}  // namespace orvantis
