#include "json/jsonstrings.h"

#include "json/jsonrecoder.h"

#include <cstring>

namespace json {

namespace {

constexpr quint64 FACTOR = 0x9e3779b97f4a7c15; // odd, of no pattern

template <typename Word>
quint64 wordAt(const char* here) {
    Word word = 0;
    std::memcpy(&word, here, sizeof(word));
    return word;
}

constexpr qsizetype STEP = sizeof(quint64);

quint64 fewBytes(const char* begin, qsizetype size) {
    constexpr qsizetype HALF = sizeof(quint32);
    if (size >= HALF)
        return wordAt<quint32>(begin) << 32 | wordAt<quint32>(begin + size - HALF);
    return wordAt<quint8>(begin) << 16 | wordAt<quint8>(begin + size / 2) << 8 |
           wordAt<quint8>(begin + size - 1);
}

/// As `memcmp` tells, but without a call: most strings have a few words.
bool areSame(const char* a, const char* b, qsizetype size) {
    if (size < STEP)
        return fewBytes(a, size) == fewBytes(b, size);
    const qsizetype last = size - STEP; // may overlap the word before
    for (qsizetype at = 0; at < last; at += STEP) {
        if (wordAt<quint64>(a + at) != wordAt<quint64>(b + at))
            return false;
    }
    return wordAt<quint64>(a + last) == wordAt<quint64>(b + last);
}

} // namespace

Strings::Strings(bool isRecoded)
    : mSlots(std::size_t(1) << SLOT_BITS)
    , mDecoder(utf8_decoder())
    , mIsRecoded(isRecoded) {}

const QString& Strings::find(const char* begin, const char* end) {
    const qsizetype size = end - begin;
    if (size > LONGEST) {
        decode(begin, end, mLong);
        return mLong;
    }
    std::unique_ptr<known>& slot = mSlots[hashOf(begin, size) >> (64 - SLOT_BITS)];
    if (slot && slot->size == size && areSame(slot->bytes, begin, size))
        return slot->text;
    return learn(begin, end, slot);
}

void Strings::decode(const char* begin, const char* end, QString& text) {
    const QByteArrayView bytes(begin, end);
    text.resize(mDecoder.requiredSpace(bytes.size()));
    QChar* const to = text.data();
    text.truncate((mIsRecoded ? decode_recoded(bytes, to) : mDecoder.appendToBuffer(to, bytes)) -
                  to);
}

/// What collides is decoded again, which is all the harm that a log can do.
quint64 Strings::hashOf(const char* begin, qsizetype size) {
    quint64 hash = static_cast<quint64>(size) * FACTOR;
    if (size < STEP)
        return (hash ^ fewBytes(begin, size)) * FACTOR;
    const qsizetype last = size - STEP;
    for (qsizetype at = 0; at < last; at += STEP)
        hash = (hash ^ wordAt<quint64>(begin + at)) * FACTOR;
    return (hash ^ wordAt<quint64>(begin + last)) * FACTOR;
}

const QString& Strings::learn(const char* begin, const char* end, std::unique_ptr<known>& slot) {
    if (!slot)
        slot = std::make_unique<known>();
    slot->size = 0; // nothing, should the memory not suffice
    decode(begin, end, slot->text);
    slot->size = end - begin;
    std::memcpy(slot->bytes, begin, static_cast<std::size_t>(slot->size));
    return slot->text;
}

} // namespace json
