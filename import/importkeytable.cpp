#include "import/importkeytable.h"

#include "import/importtext.h"

namespace import {

key_entry* KeyTable::take(std::string_view source, Named named) {
    const std::uint32_t number = mSources.numberOf(source);
    if (number == mFound.size())
        mFound.push_back(settle(source));
    source_key& found = mFound[number];
    ++found.events;
    if (found.becomes) {
        ++found.becomes->events;
        ++found.becomes->named[static_cast<std::size_t>(named)];
    }
    return found.becomes;
}

KeyTable::source_key KeyTable::settle(std::string_view source) {
    if (mRules.isIdle())
        return {entryOf(std::string(source)), {}, 0};
    const auto text = QString::fromUtf8(source.data(), static_cast<qsizetype>(source.size()));
    const Rules::outcome outcome = mRules.apply(text);
    std::string key;
    if (outcome.key)
        append_whole(key, outcome.key->toStdString());
    return {key.empty() ? nullptr : entryOf(key), outcome.matched, 0};
}

key_entry* KeyTable::entryOf(const std::string& key) {
    key_entry*& entry = mByKey[key];
    if (!entry) {
        mKeys.push_back({key, 0, {}, -1});
        entry = &mKeys.back();
    }
    return entry;
}

std::vector<std::int64_t> KeyTable::hits() const {
    std::vector<std::int64_t> hits(static_cast<std::size_t>(mRules.lines().size()));
    for (const source_key& found : mFound) {
        for (const int rule : found.matched)
            hits[static_cast<std::size_t>(rule)] += found.events;
    }
    return hits;
}

} // namespace import
