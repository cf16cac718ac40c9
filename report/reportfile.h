#pragma once

#include <QByteArrayView>
#include <QString>

namespace report {

/// Makes `bytes` the contents of the file `path`, all of them or none: when that fails, a file that
/// was there before is as it was. Returns why it failed, empty when it did not. What is no regular
/// file is left alone, as the new file takes its place.
QString save_file(const QString& path, QByteArrayView bytes);

} // namespace report
