#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

/// The text of a log, its bytes decoded in one go.
inline QString plain_text(const QByteArray& bytes) {
    const auto encoding = QStringDecoder::encodingForData(bytes);
    if (!encoding || *encoding == QStringDecoder::Utf8)
        return QString::fromUtf8(bytes);
    return QStringDecoder(*encoding)(bytes);
}
