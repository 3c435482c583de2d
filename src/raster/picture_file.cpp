#include "raster/picture_file.h"

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>
#include <cstdlib>
#include <utility>

#include "text/bytes.h"

namespace orvantis {

namespace {

QString PathOf(std::string_view nativePath) {
    return QFile::decodeName(
        QByteArray(nativePath.data(), static_cast<qsizetype>(nativePath.size())));
}

constexpr qint64 kLongestSide = 32767;

// Level 1 of 9: a map is mostly even colour, which is small at any level, and the higher ones cost
// more than the plot itself.
constexpr int kPngCompression = 11;

bool SaveAs(std::string_view nativePath, const Image& image, const char* format) {
    if (image.width <= 0 || image.height <= 0 ||
        image.pixels.size() < static_cast<std::size_t>(image.width) * image.height) {
        return false;
    }
    const QImage picture(reinterpret_cast<const uchar*>(image.pixels.data()), image.width,
                         image.height, static_cast<qsizetype>(image.width) * 4,
                         QImage::Format_RGB32);
    QSaveFile file(PathOf(nativePath));
    if (!file.open(QIODevice::WriteOnly)) return false;
    QImageWriter writer(&file, format);
    if (qstrcmp(format, "png") == 0) writer.setCompression(kPngCompression);
    return writer.write(picture) && file.commit();
}

// Header of a bitmap:
//
//   offset  size  field
//   0       2     "BM"
//   10      4     where the rows begin, bytes from the file's start
//   18      4     width, pixels
//   22      4     height, pixels; negative: the top row is the first
//   28      2     bits of a pixel
//   30      4     compression, 0 none
//   54            a palette, and the rows, each padded to a multiple of 4 bytes
constexpr qint64 kBitmapHeaderSize = 54;

// True if the file is a bitmap without compression, of a size that a picture may have, with all
// its rows. Leaves the file at its start.
bool HoldsWholeBitmap(QFile& file) {
    const QByteArray header = file.read(kBitmapHeaderSize);
    if (header.size() < kBitmapHeaderSize || !header.startsWith("BM")) return false;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(header.constData());
    const qint64 rows = GetU32(bytes + 10);
    const qint64 width = GetI32(bytes + 18);
    const qint64 height = std::abs(qint64{GetI32(bytes + 22)});
    const qint64 rowSize = (width * GetU16(bytes + 28) + 31) / 32 * 4;
    if (width < 1 || width > kLongestSide || height < 1 || height > kLongestSide) return false;
    if (GetU32(bytes + 30) != 0 || file.size() < rows + rowSize * height) return false;
    return file.seek(0);
}

}  // namespace

bool SavePng(std::string_view nativePath, const Image& image) {
    return SaveAs(nativePath, image, "png");
}

bool SaveImage(std::string_view nativePath, const Image& image) {
    return SaveAs(nativePath, image, "bmp");
}

bool LoadImage(std::string_view nativePath, Image& image) {
    QFile file(PathOf(nativePath));
    if (!file.open(QIODevice::ReadOnly) || !HoldsWholeBitmap(file)) return false;
    QImageReader reader(&file, "bmp");
    const QImage picture = reader.read().convertToFormat(QImage::Format_RGB32);
    if (picture.isNull()) return false;

    Image loaded;
    loaded.width = picture.width();
    loaded.height = picture.height();
    loaded.pixels.reserve(static_cast<std::size_t>(loaded.width) * loaded.height);
    for (int y = 0; y < loaded.height; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        // Every pixel of a picture is opaque, whatever the file's fourth byte.
        for (int x = 0; x < loaded.width; ++x) loaded.pixels.push_back(row[x] | 0xFF000000);
    }
    image = std::move(loaded);
    return true;
}

}  // namespace orvantis
