#include "report/reportoutput.h"

#include <QByteArray>

namespace report {

namespace {

QString withoutLoneSurrogates(QStringView text) {
    QString valid = text.toString();
    for (qsizetype i = 0; i < valid.size(); ++i) {
        const bool pair =
            valid[i].isHighSurrogate() && i + 1 < valid.size() && valid[i + 1].isLowSurrogate();
        if (pair)
            ++i;
        else if (valid[i].isSurrogate())
            valid[i] = QChar::ReplacementCharacter;
    }
    return valid;
}

} // namespace

Output::Output(std::FILE* stream)
    : mStream(stream) {}

Output& Output::operator<<(QByteArrayView utf8) {
    std::fwrite(utf8.data(), 1, static_cast<std::size_t>(utf8.size()), mStream);
    return *this;
}

Output& Output::operator<<(QStringView text) {
    const bool valid = text.isValidUtf16();
    return *this << QByteArrayView(valid ? text.toUtf8() : withoutLoneSurrogates(text).toUtf8());
}

Output& Output::operator<<(int number) {
    return *this << QByteArrayView(QByteArray::number(number));
}

bool Output::flush() {
    return std::fflush(mStream) == 0 && !std::ferror(mStream);
}

QString printable(QString text) {
    for (QChar& c : text) {
        if (!c.isPrint() && !c.isSurrogate())
            c = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace report
