#include "json/jsonrecoder.h"

#include <algorithm>
#include <bit>

namespace json {

namespace {

// Six bits of a unit stand in each byte but the first, which tells their number.
constexpr int BITS = 6;
constexpr int MASK = (1 << BITS) - 1;
constexpr int FOLLOWS = 0x80;
constexpr int BEGINS_TWO = 0xc0;
constexpr int BEGINS_THREE = 0xe0;
constexpr int MOST_BYTES = 3;

char* encodeUnit(char16_t unit, char* to) {
    if (unit < FOLLOWS) {
        *to++ = static_cast<char>(unit);
        return to;
    }
    if (unit >> (BITS + BITS - 1) == 0) {
        *to++ = static_cast<char>(BEGINS_TWO | unit >> BITS);
    } else {
        *to++ = static_cast<char>(BEGINS_THREE | unit >> (BITS + BITS));
        *to++ = static_cast<char>(FOLLOWS | (unit >> BITS & MASK));
    }
    *to++ = static_cast<char>(FOLLOWS | (unit & MASK));
    return to;
}

QStringDecoder decoderOf(QStringConverter::Encoding encoding) {
    return encoding == QStringConverter::Utf8 ? utf8_decoder() : QStringDecoder(encoding);
}

qsizetype unitOf(QStringConverter::Encoding encoding) {
    if (encoding == QStringConverter::Utf8)
        return 1;
    return encoding == QStringConverter::Utf32LE || encoding == QStringConverter::Utf32BE ? 4 : 2;
}

} // namespace

Recoder::Recoder(QStringConverter::Encoding encoding, bool dropsReturns)
    : mDecoder(decoderOf(encoding))
    , mUnit(unitOf(encoding))
    , mDropsReturns(dropsReturns) {}

QByteArrayView Recoder::recode(QByteArrayView bytes, bool isLast) {
    mBytes.append(bytes);
    const qsizetype held = isLast ? 0 : unfinished();
    decode(QByteArrayView(mBytes).chopped(held));
    mBytes.remove(0, mBytes.size() - held);
    encode();
    return mRecoded;
}

qsizetype Recoder::unfinished() const {
    return mUnit > 1 ? mBytes.size() % mUnit : unfinished_utf8(mBytes);
}

void Recoder::decode(QByteArrayView bytes) {
    mUnits.resize(mDecoder.requiredSpace(bytes.size()));
    const QChar* const end = mDecoder.appendToBuffer(mUnits.data(), bytes);
    mUnits.truncate(end - mUnits.constData());
    if (mDropsReturns)
        mUnits.remove(u'\r');
}

void Recoder::encode() {
    mRecoded.resize(MOST_BYTES * mUnits.size());
    char* to = mRecoded.data();
    for (const QChar unit : std::as_const(mUnits))
        to = encodeUnit(unit.unicode(), to);
    mRecoded.truncate(to - mRecoded.constData());
}

QStringDecoder utf8_decoder() {
    return QStringDecoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                    QStringDecoder::Flag::ConvertInitialBom);
}

qsizetype unfinished_utf8(QByteArrayView bytes) {
    for (qsizetype back = 1; back <= std::min(bytes.size(), qsizetype(MOST_BYTES)); ++back) {
        const auto byte = static_cast<uchar>(bytes[bytes.size() - back]);
        const int length = std::countl_one(byte); // of the character that the byte begins
        if (length != 1)
            return length > back ? back : 0;
    }
    return 0;
}

QChar* decode_recoded(QByteArrayView bytes, QChar* to) {
    for (const char* here = bytes.begin(); here != bytes.end();) {
        int unit = static_cast<uchar>(*here++);
        const int more = std::countl_one(static_cast<uchar>(unit)) - 1; // -1 for ASCII
        if (more > 0)
            unit &= MASK >> more;
        for (int i = 0; i < more; ++i)
            unit = unit << BITS | (*here++ & MASK);
        *to++ = QChar(unit);
    }
    return to;
}

} // namespace json
