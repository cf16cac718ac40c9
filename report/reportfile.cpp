#include "report/reportfile.h"

#include <QFileInfo>
#include <QSaveFile>

namespace report {

namespace {

/// A disk that fills up takes a part first; the reason comes with the next try.
bool writeAll(QSaveFile& file, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const qint64 written = file.write(bytes.data(), bytes.size());
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}

} // namespace

QString save_file(const QString& path, QByteArrayView bytes) {
    const QFileInfo there(path);
    if (there.exists() && !there.isFile())
        return QStringLiteral("it is no regular file");
    QSaveFile file(path);
    const bool saved = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                       writeAll(file, bytes) && file.commit();
    return saved ? QString() : file.errorString();
}

} // namespace report
