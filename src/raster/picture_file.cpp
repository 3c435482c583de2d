#include "raster/picture_file.h"

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>
#include <cstring>

namespace orvantis {

namespace {

QString PathOf(std::string_view nativePath) {
    return QFile::decodeName(
        QByteArray(nativePath.data(), static_cast<qsizetype>(nativePath.size())));
}

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

}  // namespace

bool SavePng(std::string_view nativePath, const Image& image) {
    return SaveAs(nativePath, image, "png");
}

bool SaveImage(std::string_view nativePath, const Image& image) {
    return SaveAs(nativePath, image, "bmp");
}

bool LoadImage(std::string_view nativePath, Image& image) {
    QImageReader reader(PathOf(nativePath), "bmp");
    const QSize size = reader.size();
    if (size.width() < 1 || size.height() < 1 || size.width() > 32767 || size.height() > 32767) {
        return false;
    }
    const QImage picture = reader.read().convertToFormat(QImage::Format_RGB32);
    if (picture.isNull()) return false;

    Image loaded;
    loaded.width = picture.width();
    loaded.height = picture.height();
    loaded.pixels.resize(static_cast<std::size_t>(loaded.width) * loaded.height);
    for (int y = 0; y < loaded.height; ++y) {
        std::memcpy(loaded.pixels.data() + static_cast<std::size_t>(y) * loaded.width,
                    picture.constScanLine(y), static_cast<std::size_t>(loaded.width) * 4);
    }
    image = std::move(loaded);
    return true;
}

}  // namespace orvantis
