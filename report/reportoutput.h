#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <cstdio>

namespace report {

/// A buffered stream of UTF-8 text on a C stream that it does not own.
class Output {
public:
    explicit Output(std::FILE* stream);

    Output& operator<<(QByteArrayView utf8);

    /// Lone surrogates become U+FFFD, so that the output is valid whatever the text.
    Output& operator<<(QStringView text);

    Output& operator<<(int number);

    /// Writes what is buffered. False when anything could not be written since the stream was
    /// opened.
    bool flush();

private:
    std::FILE* mStream;
};

/// `text` without what moves a terminal's cursor or breaks a line.
QString printable(QString text);

} // namespace report
