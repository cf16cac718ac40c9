#include "report/reportlogdevice.h"

#include <algorithm>

namespace report {

namespace {

constexpr qsizetype BEGINNING = 4096;
constexpr QByteArrayView MARK = "\xef\xbb\xbf"; // the byte order mark in UTF-8
constexpr qsizetype FIRST = MARK.size() + 3;

} // namespace

LogDevice::LogDevice(QIODevice& source)
    : mSource(source) {
    open(ReadOnly | Unbuffered); // so that each read is one read of the source
}

QByteArrayView LogDevice::first() const {
    return QByteArrayView(mFirst).sliced(mFirst.startsWith(MARK) ? MARK.size() : 0);
}

qint64 LogDevice::readData(char* data, qint64 size) {
    const qint64 read = mSource.read(data, size);
    if (read > 0)
        note({data, read});
    else
        mIsAtEnd = true;
    return read;
}

/// The text is decoded as its readers do, by the byte order mark that the first bytes have.
void LogDevice::note(QByteArrayView bytes) {
    const auto encoding =
        mBeginning.isEmpty() ? QStringDecoder::encodingForData(bytes) : std::nullopt;
    if (encoding && *encoding != QStringDecoder::Utf8)
        mDecoder = QStringDecoder(*encoding);
    mBeginning += bytes.first(std::min(bytes.size(), BEGINNING - mBeginning.size()));
    if (mDecoder.isValid())
        noteText(QString(mDecoder(bytes)).toUtf8());
    else
        noteText(bytes);
}

void LogDevice::noteText(QByteArrayView utf8) {
    const qsizetype nul = utf8.indexOf('\0');
    if (nul >= 0)
        mHasNul = mIsAtEnd = true;
    utf8 = utf8.first(nul < 0 ? utf8.size() : nul).trimmed();
    for (auto c = utf8.begin(); c != utf8.end() && mFirst.size() < FIRST; ++c) {
        if (*c > ' ' || *c < '\0')
            mFirst += *c;
    }
    if (!utf8.isEmpty())
        mLast = utf8.back();
}

} // namespace report
