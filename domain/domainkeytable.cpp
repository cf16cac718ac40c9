#include "domain/domainkeytable.h"

#include "domain/domainfingerprint.h"

#include <cstdint>
#include <cstring>

namespace domain {

namespace {

constexpr qsizetype CHARACTERS = sizeof(quint64) / sizeof(QChar);

quint64 fourAt(const QChar* here) {
    quint64 four = 0;
    std::memcpy(&four, here, sizeof(four));
    return four;
}

} // namespace

std::size_t KeyTable::hash::operator()(const QString& key) const {
    // The base differs in every process, so that nobody can write a log whose keys collide.
    using fingerprint::BASE;
    using fingerprint::mixed;
    const QChar* here = key.constData();
    const QChar* const end = here + key.size();
    quint64 made = BASE ^ static_cast<quint64>(key.size());
    for (; end - here > CHARACTERS; here += CHARACTERS)
        made = mixed(made ^ fourAt(here), BASE);
    if (key.size() >= CHARACTERS)
        return mixed(made ^ fourAt(end - CHARACTERS), BASE); // may overlap the four before
    quint64 rest = 0;
    for (; here != end; ++here)
        rest = rest << 16 | here->unicode();
    return mixed(made ^ rest, BASE);
}

void KeyTable::clear() {
    mLatest = nullptr;
    mRecent.fill(nullptr);
    mIndices.clear();
}

const KeyTable::Entry* KeyTable::find(const QString& key) {
    if (mLatest && is_same_text(mLatest->first, key))
        return mLatest;
    const Entry*& recent = recentAt(key);
    if (!recent || !is_same_text(recent->first, key)) {
        const auto known = mIndices.find(key);
        if (known == mIndices.end())
            return nullptr;
        recent = &*known;
    }
    mLatest = recent;
    return mLatest;
}

void KeyTable::set(const QString& key, int index) {
    mIndices[key] = index;
}

void KeyTable::remove(const QString& key) {
    mLatest = nullptr;
    mRecent.fill(nullptr);
    mIndices.erase(key);
}

void KeyTable::copyTo(std::vector<QString>& keys) const {
    for (const auto& [key, index] : mIndices)
        keys[static_cast<std::size_t>(index)] = key;
}

const KeyTable::Entry*& KeyTable::recentAt(const QString& key) {
    // Places differ in more than the lowest bits, as the allocator hands out whole steps.
    const auto place = reinterpret_cast<std::uintptr_t>(key.constData());
    return mRecent[place / alignof(std::max_align_t) % RECENT];
}

} // namespace domain
