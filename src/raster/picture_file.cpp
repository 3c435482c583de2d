#include "raster/picture_file.h"

#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <array>
#include <cstdlib>
#include <utility>
#include <vector>

#include "raster/whole_file.h"
#include "text/bytes.h"

namespace orvantis {

namespace {

QString PathOf(std::string_view nativePath) {
    return QFile::decodeName(
        QByteArray(nativePath.data(), static_cast<qsizetype>(nativePath.size())));
}

constexpr qint64 kLongestSide = 32767;

bool HasPixels(const Image& image) {
    return image.width > 0 && image.height > 0 &&
           image.pixels.size() >= static_cast<std::size_t>(image.width) * image.height;
}

// Checksum of the chunks of a PNG (ISO/IEC 15948, annex D).
std::uint32_t Checksum(const QByteArray& bytes) {
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> entries{};
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t value = i;
            for (int bit = 0; bit < 8; ++bit) {
                value = (value & 1) != 0 ? 0xEDB88320 ^ (value >> 1) : value >> 1;
            }
            entries[i] = value;
        }
        return entries;
    }();
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum = table[(sum ^ static_cast<std::uint8_t>(byte)) & 0xFF] ^ (sum >> 8);
    }
    return ~sum;
}

void AppendBigEndian(QByteArray& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes.append(static_cast<char>(value >> shift));
}

// A chunk: length of its data, type, data, checksum of type and data.
void AppendChunk(QByteArray& png, const QByteArray& type, const QByteArray& data) {
    AppendBigEndian(png, static_cast<std::uint32_t>(data.size()));
    png.append(type + data);
    AppendBigEndian(png, Checksum(type + data));
}

// The rows in red, green and blue, each as its difference from the row above (filter 2). A map is
// mostly even colour, which makes this mostly zeros.
QByteArray FilteredRows(const Image& image) {
    constexpr char kUpFilter = 2;
    const std::size_t width = image.width;
    QByteArray rows(static_cast<qsizetype>((width * 3 + 1) * image.height), Qt::Uninitialized);
    char* out = rows.data();
    const std::vector<std::uint32_t> nothing(width, 0);
    const std::uint32_t* above = nothing.data();
    for (int y = 0; y < image.height; ++y) {
        const std::uint32_t* row = image.pixels.data() + y * width;
        *out++ = kUpFilter;
        for (std::size_t x = 0; x < width; ++x) {
            *out++ = static_cast<char>((row[x] >> 16) - (above[x] >> 16));
            *out++ = static_cast<char>((row[x] >> 8) - (above[x] >> 8));
            *out++ = static_cast<char>(row[x] - above[x]);
        }
        above = row;
    }
    return rows;
}

// The picture as PNG, 8 bits a colour, without transparency. Empty if the rows can't be compressed
// into one chunk.
QByteArray EncodePng(const Image& image) {
    // The quickest compression: the higher levels save little and cost more than the plot itself.
    constexpr int kLevel = 1;
    constexpr int kOwnHeader = 4;  // what qCompress puts before the compressed bytes

    QByteArray png("\x89PNG\r\n\x1A\n", 8);
    QByteArray header;
    AppendBigEndian(header, static_cast<std::uint32_t>(image.width));
    AppendBigEndian(header, static_cast<std::uint32_t>(image.height));
    header.append("\x08\x02\x00\x00\x00", 5);
    AppendChunk(png, "IHDR", header);
    const QByteArray rows = qCompress(FilteredRows(image), kLevel).mid(kOwnHeader);
    if (rows.isEmpty() || rows.size() > INT32_MAX) return {};
    AppendChunk(png, "IDAT", rows);
    AppendChunk(png, "IEND", {});
    return png;
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
    // Fewer bits would let a small file become a large picture; the program writes none such.
    const int depth = GetU16(bytes + 28);
    if (depth != 24 && depth != 32) return false;
    if (GetU32(bytes + 30) != 0 || file.size() < rows + rowSize * height) return false;
    return file.seek(0);
}

}  // namespace

std::string PngBytes(const Image& image) {
    return HasPixels(image) ? EncodePng(image).toStdString() : std::string();
}

bool SavePng(std::string_view nativePath, const Image& image) {
    if (!HasPixels(image)) return false;
    const QByteArray png = EncodePng(image);
    if (png.isEmpty()) return false;
    return WriteWholeFile(nativePath,
                          [&](QIODevice& file) { return file.write(png) == png.size(); });
}

bool SaveImage(std::string_view nativePath, const Image& image) {
    if (!HasPixels(image)) return false;
    const QImage picture(reinterpret_cast<const uchar*>(image.pixels.data()), image.width,
                         image.height, static_cast<qsizetype>(image.width) * 4,
                         QImage::Format_RGB32);
    return WriteWholeFile(nativePath, [&](QIODevice& file) { return picture.save(&file, "bmp"); });
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
