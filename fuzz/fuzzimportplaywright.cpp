// Imports traces of tests in a browser: an input as the zip file, and as the trace within one.

#include "fuzz/fuzzimport.h"
#include "import/importplaywrightreader.h"

#include <QFile>
#include <QTemporaryDir>

#include <minizip/zip.h>

namespace {

/// The trace as the only member of a zip file.
QByteArray zipped(const QByteArray& trace) {
    static const QTemporaryDir FOLDER;
    const QString path = FOLDER.filePath(QStringLiteral("trace.zip"));
    zipFile zip = zipOpen64(QFile::encodeName(path).constData(), APPEND_STATUS_CREATE);
    zipOpenNewFileInZip(zip, "0.trace", nullptr, nullptr, 0, nullptr, 0, nullptr, 0, 0);
    zipWriteInFileInZip(zip, trace.constData(), static_cast<unsigned>(trace.size()));
    zipCloseFileInZip(zip);
    zipClose(zip, nullptr);
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const import::options options;
    import::PlaywrightReader reader(options);
    const QByteArray text = fuzz::text_of(data, size);
    fuzz::require_log(reader, text);
    fuzz::require_log(reader, zipped(text));
    return 0;
}
