#pragma once

#include <QtGlobal>

/// The polynomial fingerprint of R. M. Karp and M. O. Rabin ("Efficient randomized pattern-matching
/// algorithms", IBM Journal of Research and Development 31, 1987) over the prime 2^61 - 1. Its base
/// is another one in every process, so that nobody can write a log whose keys or runs collide.
namespace domain::fingerprint {

inline constexpr quint64 PRIME = (quint64(1) << 61) - 1;

extern const quint64 BASE;

/// `value` modulo the prime, for values below 2^63.
inline quint64 reduced(quint64 value) {
    const quint64 folded = (value & PRIME) + (value >> 61);
    return folded >= PRIME ? folded - PRIME : folded;
}

inline quint64 product(quint64 a, quint64 b) {
    __extension__ using wide = unsigned __int128;
    const wide exact = static_cast<wide>(a) * b;
    return reduced(static_cast<quint64>(exact & PRIME) + static_cast<quint64>(exact >> 61));
}

/// The fingerprint of a sequence of fingerprint `hash` with `value`, below 2^61, appended.
inline quint64 appended(quint64 hash, quint64 value) {
    return reduced(product(hash, BASE) + value + 1); // plus one, so that leading zeros count
}

/// The two halves of a 128-bit product, folded: each bit of the factors reaches all of the result.
inline quint64 mixed(quint64 a, quint64 b) {
    __extension__ using wide = unsigned __int128;
    const wide exact = static_cast<wide>(a) * b;
    return static_cast<quint64>(exact) ^ static_cast<quint64>(exact >> 64);
}

} // namespace domain::fingerprint
