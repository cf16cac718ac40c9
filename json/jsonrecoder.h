#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>

namespace json {

/// Turns text into UTF-8 in which every unit of UTF-16 is encoded on its own: what has no partner
/// is kept, and a character of two units takes six bytes.
class Recoder {
public:
    /// `dropsReturns`: without the carriage returns.
    Recoder(QStringConverter::Encoding encoding, bool dropsReturns);

    /// The next bytes of the text; `isLast`: there are no more. What is returned holds until the
    /// next call. Throws `std::bad_alloc`.
    QByteArrayView recode(QByteArrayView bytes, bool isLast);

private:
    qsizetype unfinished() const;
    void decode(QByteArrayView bytes);
    void encode();

    QStringDecoder mDecoder;
    const qsizetype mUnit; ///< Bytes that the encoding takes at a time.
    const bool mDropsReturns;
    QByteArray mBytes; ///< Not yet decoded.
    QString mUnits;
    QByteArray mRecoded;
};

/// Decodes UTF-8, as much of a text as can be: what is no character becomes one replacement for
/// each byte, and a byte order mark is an ordinary character.
QStringDecoder utf8_decoder();

/// How many bytes at the end of UTF-8 only begin a character.
qsizetype unfinished_utf8(QByteArrayView bytes);

/// Decodes what a recoder made. `to` has room for as many units as there are bytes; returns the
/// end.
QChar* decode_recoded(QByteArrayView bytes, QChar* to);

} // namespace json
