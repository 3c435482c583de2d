#include "raster/whole_file.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace orvantis {

bool WriteWholeFile(std::string_view nativePath, const std::function<bool(QIODevice&)>& write) {
    const QString path =
        QFile::decodeName(QByteArray(nativePath.data(), static_cast<qsizetype>(nativePath.size())));
    const QFileInfo old(path);
    if (old.exists() && !old.isFile()) return false;
    QSaveFile file(path);
    // What is still held back is written out first: commit doesn't notice when that fails.
    return file.open(QIODevice::WriteOnly) && write(file) && file.flush() && file.commit();
}

}  // namespace orvantis
