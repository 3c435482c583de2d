#include "raster/text_face.h"

#include <QCoreApplication>
#include <QFile>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "raster/glyph_font.h"
#include "raster/glyph_outline.h"
#include "raster/qt_gui.h"
#include "text/code_page.h"

namespace orvantis {

namespace {

// The two fonts of the glyph font: where Debian installs them, and their family for systems that
// keep them elsewhere.
struct FontFile {
    const char* path;
    const char* family;
    bool bold;
};
constexpr FontFile kSans = {"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", "DejaVu Sans",
                            false};
constexpr FontFile kSansBold = {"/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf",
                                "DejaVu Sans", true};
constexpr FontFile kSymbols = {"/usr/share/fonts/truetype/noto/NotoSansSymbols2-Regular.ttf",
                               "Noto Sans Symbols2", false};

// How far an upright letter leans when its font has no italic of its own.
constexpr double kSlant = 0.2;

// Narrowing of letters that share one cell.
constexpr double kNarrow = 0.72;

// Qt's side of a face.
struct FaceFonts {
    TextFace face;
    QRawFont text;     // ordinary letters
    QRawFont symbols;  // of the glyph font alone
    QRawFont spare;    // for what `text` hasn't got
};

std::vector<std::unique_ptr<FaceFonts>>& Faces() {
    static auto* const faces = new std::vector<std::unique_ptr<FaceFonts>>;
    return *faces;
}

// Qt's fonts can't outlive Qt; the masks that are ready can.
void LetGoOfQt() {
    for (const auto& fonts : Faces()) {
        fonts->text = QRawFont();
        fonts->symbols = QRawFont();
        fonts->spare = QRawFont();
    }
}

QRawFont LoadFontFile(const FontFile& file, double pixels) {
    const QString path = QString::fromLatin1(file.path);
    if (QFile::exists(path)) {
        QRawFont font(path, pixels, QFont::PreferFullHinting);
        if (font.isValid()) return font;
    }
    QFont family(QString::fromLatin1(file.family));
    family.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
    family.setBold(file.bold);
    return QRawFont::fromFont(family);
}

QRawFont LoadNamedFont(const Font& font, double pixels) {
    QFont family(QString::fromStdString(ToUtf8(font.name)));
    family.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
    family.setBold(font.bold);
    family.setItalic(font.italic);
    family.setHintingPreference(QFont::PreferFullHinting);
    return QRawFont::fromFont(family);
}

quint32 GlyphNumber(const QRawFont& font, char32_t character) {
    if (!font.isValid()) return 0;
    const auto numbers = font.glyphIndexesForString(QString::fromUcs4(&character, 1));
    return numbers.isEmpty() ? 0 : numbers.front();
}

// Takes the picture of a shape, in ink on nothing, over into the mask. `left` and `top` are where
// its first pixel lies.
void TakeMask(const QImage& ink, int left, int top, GlyphMask& mask) {
    mask.left = left;
    mask.top = top;
    mask.width = ink.width();
    mask.height = ink.height();
    mask.cover.resize(static_cast<std::size_t>(mask.width) * mask.height);
    for (int y = 0; y < mask.height; ++y) {
        std::copy_n(ink.constScanLine(y), mask.width,
                    mask.cover.begin() + static_cast<std::ptrdiff_t>(y) * mask.width);
    }
}

// Fills a path, given from the base line, with smooth edges.
void FillPath(const QPainterPath& path, GlyphMask& mask) {
    const QRect box = path.boundingRect().toAlignedRect();
    if (box.isEmpty()) return;
    QImage ink(box.size(), QImage::Format_Alpha8);
    ink.fill(0);
    QPainter painter(&ink);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-box.left(), -box.top());
    painter.fillPath(path, Qt::black);
    painter.end();
    TakeMask(ink, box.left(), box.top(), mask);
}

double AdvanceOf(const QRawFont& font, quint32 number) {
    const auto advances = font.advancesForGlyphIndexes({number});
    return advances.isEmpty() ? 0 : advances.front().x();
}

// A character as its font draws it, fitted to the grid of pixels by the font's own rules.
void SetCharacter(const QRawFont& font, quint32 number, bool slanted, GlyphMask& mask) {
    mask.advance = static_cast<int>(std::lround(AdvanceOf(font, number)));
    if (slanted) {
        FillPath(QTransform(1, 0, -kSlant, 1, 0, 0).map(font.pathForGlyph(number)), mask);
        return;
    }
    const QImage ink = font.alphaMapForGlyph(number, QRawFont::PixelAntialiasing);
    if (ink.isNull()) return;
    const QRectF box = font.boundingRect(number);
    TakeMask(ink.convertToFormat(QImage::Format_Alpha8), static_cast<int>(std::floor(box.left())),
             static_cast<int>(std::floor(box.top())), mask);
}

// A letter's shape as its designer drew it. Fonts answer with one fitted to the grid of pixels; at
// a large size that changes nothing that can be seen.
QPainterPath UnfittedPath(const QRawFont& font, quint32 number) {
    constexpr double kLargeSize = 1024;
    QRawFont large = font;
    large.setPixelSize(kLargeSize);
    const double scale = font.pixelSize() / kLargeSize;
    return QTransform::fromScale(scale, scale).map(large.pathForGlyph(number));
}

// Letters side by side in little more than the room of one. `x` becomes where they end.
QPainterPath LettersPath(const QRawFont& font, std::string_view letters, bool fitted, double& x) {
    QPainterPath path;
    x = 0;
    for (const char letter : letters) {
        const quint32 number = GlyphNumber(font, static_cast<std::uint8_t>(letter));
        const QPainterPath shape = fitted ? font.pathForGlyph(number) : UnfittedPath(font, number);
        path.addPath(QTransform(kNarrow, 0, 0, 1, x, 0).map(shape));
        x += AdvanceOf(font, number) * kNarrow;
    }
    return path;
}

// Size of a shape that no font has: that of a capital letter's cell, a little larger.
double ShapeSize(double pixels) {
    return std::max(7.0, std::round(pixels * 0.85));
}

// Shapes that no font has.
QPainterPath ShapePath(GlyphShape shape, double size) {
    const double middle = size / 2;
    const QPointF centre(middle + 0.5, -middle);
    const auto disc = [](const QPointF& at, double radius) {
        QPainterPath path;
        path.addEllipse(at, radius, radius);
        return path;
    };
    QPainterPath path;
    switch (shape) {
        case GlyphShape::SolarEclipse:  // the dark disc before the bright one
            path = disc(centre, middle).subtracted(disc(centre, middle - 1));
            path.addPath(disc(centre + QPointF(middle * 0.2, -middle * 0.2), middle * 0.55));
            break;
        case GlyphShape::LunarEclipse:  // a disc that enters a shadow
            path =
                disc(centre, middle)
                    .subtracted(disc(centre + QPointF(middle * 0.5, -middle * 0.5), middle * 0.75));
            break;
        case GlyphShape::None:
            break;
    }
    return path;
}

// A letter of a font; number 0 where there is none.
struct FontLetter {
    QRawFont font;
    quint32 number = 0;
};

// The character in the first font that has it; a question mark if none has.
FontLetter FindLetter(const FaceFonts& fonts, const QRawFont& first, char32_t character) {
    for (const char32_t shown : {character, U'?'}) {
        for (const QRawFont* font : {&first, &fonts.text, &fonts.spare}) {
            const quint32 number = GlyphNumber(*font, shown);
            if (number != 0) return {*font, number};
        }
    }
    return {};
}

// What a byte of a face shows.
struct FaceGlyph {
    GlyphEntry entry;
    FontLetter letter;  // unless the entry's source is Letters or Drawn
    bool slanted = false;
};

FaceGlyph FindGlyph(const FaceFonts& fonts, std::uint8_t byte) {
    FaceGlyph glyph;
    if (fonts.face.font.name != kGlyphFontName) {
        glyph.letter = FindLetter(fonts, fonts.text, CodePageCharacter(byte));
        return glyph;
    }
    glyph.entry = GlyphOf(byte);
    const GlyphSource source = glyph.entry.source;
    glyph.slanted = fonts.face.font.italic && source == GlyphSource::Text;
    if (source != GlyphSource::Letters && source != GlyphSource::Drawn) {
        const bool symbol = source == GlyphSource::Symbols;
        glyph.letter =
            FindLetter(fonts, symbol ? fonts.symbols : fonts.text, glyph.entry.character);
    }
    return glyph;
}

void MakeMask(const FaceFonts& fonts, std::uint8_t byte, GlyphMask& mask) {
    mask.ready = true;
    const FaceGlyph glyph = FindGlyph(fonts, byte);
    if (glyph.entry.source == GlyphSource::Letters) {
        double width = 0;
        FillPath(LettersPath(fonts.text, glyph.entry.letters, true, width), mask);
        mask.advance = static_cast<int>(std::ceil(width)) + 1;
    } else if (glyph.entry.source == GlyphSource::Drawn) {
        const double size = ShapeSize(fonts.text.pixelSize());
        FillPath(ShapePath(glyph.entry.shape, size), mask);
        mask.advance = static_cast<int>(size) + 2;
    } else if (glyph.letter.number != 0) {
        SetCharacter(glyph.letter.font, glyph.letter.number, glyph.slanted, mask);
    }
}

GlyphOutline MakeOutline(const FaceFonts& fonts, std::uint8_t byte) {
    GlyphOutline outline;
    const FaceGlyph glyph = FindGlyph(fonts, byte);
    if (glyph.entry.source == GlyphSource::Letters) {
        double width = 0;
        outline.path = LettersPath(fonts.text, glyph.entry.letters, false, width);
    } else if (glyph.entry.source == GlyphSource::Drawn) {
        outline.path = ShapePath(glyph.entry.shape, ShapeSize(fonts.text.pixelSize()));
    } else if (glyph.letter.number != 0) {
        outline.path = UnfittedPath(glyph.letter.font, glyph.letter.number);
        if (glyph.slanted) {
            outline.path = QTransform(1, 0, -kSlant, 1, 0, 0).map(outline.path);
        } else {
            outline.font = glyph.letter.font;
            outline.number = glyph.letter.number;
        }
    }
    return outline;
}

// Qt's side of a face that FindTextFace gave out.
const FaceFonts* FontsOf(const TextFace& face) {
    for (const auto& fonts : Faces()) {
        if (&fonts->face == &face) return fonts.get();
    }
    return nullptr;
}

bool SameFont(const Font& a, const Font& b) {
    return a.name == b.name && a.size == b.size && a.bold == b.bold && a.italic == b.italic;
}

}  // namespace

TextFace* FindTextFace(const Font& wanted, double dotsPerInch) {
    // A size that isn't a number is held at the lower end; it would equal no face that is kept.
    Font font = wanted;
    font.size = wanted.size >= 1 ? std::min(500.0F, wanted.size) : 1.0F;
    for (const auto& fonts : Faces()) {
        if (SameFont(fonts->face.font, font) && fonts->face.dotsPerInch == dotsPerInch) {
            return &fonts->face;
        }
    }
    EnsureQtGui();
    if (Faces().empty()) qAddPostRoutine(LetGoOfQt);

    const double pixels = font.size * dotsPerInch / 72;  // 72 points are an inch
    auto fonts = std::make_unique<FaceFonts>();
    fonts->face.font = font;
    fonts->face.dotsPerInch = dotsPerInch;
    fonts->spare = LoadFontFile(font.bold ? kSansBold : kSans, pixels);
    if (font.name == kGlyphFontName) {
        fonts->text = fonts->spare;
        fonts->symbols = LoadFontFile(kSymbols, pixels);
    } else {
        fonts->text = LoadNamedFont(font, pixels);
    }
    fonts->face.ascent = static_cast<int>(std::ceil(fonts->text.ascent()));
    fonts->face.height =
        fonts->face.ascent + static_cast<int>(std::ceil(std::abs(fonts->text.descent())));
    Faces().push_back(std::move(fonts));
    return &Faces().back()->face;
}

const GlyphMask& MaskOf(TextFace& face, std::uint8_t byte) {
    GlyphMask& mask = face.masks[byte];
    if (!mask.ready) {
        const FaceFonts* fonts = FontsOf(face);
        if (fonts != nullptr) MakeMask(*fonts, byte, mask);
    }
    return mask;
}

GlyphOutline OutlineOf(TextFace& face, std::uint8_t byte) {
    const FaceFonts* fonts = FontsOf(face);
    return fonts == nullptr ? GlyphOutline() : MakeOutline(*fonts, byte);
}

int TextWidth(TextFace& face, std::string_view text) {
    int width = 0;
    for (const char byte : text) width += MaskOf(face, static_cast<std::uint8_t>(byte)).advance;
    return width;
}

}  // namespace orvantis
