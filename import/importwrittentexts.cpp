#include "import/importwrittentexts.h"

#include <QString>

#include <algorithm>

namespace import {

namespace {

constexpr std::size_t MOST = 100'000;
constexpr std::size_t LONGEST = 255; // bytes
constexpr std::size_t SHORTEST = 2;  // bytes; shorter ones say nothing of anyone
constexpr std::size_t WORD = 3;      // bytes from which a text is looked for among the words
constexpr std::size_t ANYWHERE = 6;  // bytes from which it is looked for within words

std::string folded(std::string_view text) {
    const std::string_view begin = text.substr(0, LONGEST);
    return QString::fromUtf8(begin.data(), static_cast<qsizetype>(begin.size()))
        .simplified()
        .toCaseFolded()
        .toStdString();
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

bool isBorder(std::string_view name, std::size_t at) {
    return at == 0 || at >= name.size() || !isLetter(name[at - 1]) || !isLetter(name[at]);
}

std::size_t sharedBy(std::string_view a, std::string_view b) {
    const auto differs = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    return static_cast<std::size_t>(differs - a.begin());
}

bool isMasking(std::string_view text) {
    return text.find_first_not_of("* ") == std::string_view::npos;
}

} // namespace

void WrittenTexts::note(std::int64_t field, std::string_view text) {
    const std::string now = folded(text);
    if (now.size() < SHORTEST || isMasking(now))
        return;
    const std::int64_t first = mNumber - static_cast<std::int64_t>(mTexts.size()) + 1;
    std::int64_t& last = mLast[field];
    if (last >= first) {
        auto& before = mTexts[static_cast<std::size_t>(last - first)];
        if (before != mSorted.end() && before->starts_with(now))
            return;
        if (before != mSorted.end() && now.starts_with(*before)) {
            mSorted.erase(before);
            before = mSorted.end();
        }
    }
    last = ++mNumber;
    mTexts.push_back(mSorted.insert(now));
    if (mTexts.size() > MOST) {
        if (mTexts.front() != mSorted.end())
            mSorted.erase(mTexts.front());
        mTexts.pop_front();
    }
    if (mLast.size() > MOST)
        mLast.clear();
}

bool WrittenTexts::isRepeatedBy(std::string_view name) {
    if (mTexts.empty() || name.empty())
        return false;
    if (mAnswers.size() > MOST)
        mAnswers.clear();
    auto known = mAnswers.find(name);
    if (known == mAnswers.end())
        known = mAnswers.emplace(name, answer()).first;
    answer& latest = known->second;
    if (latest.isRepeated || latest.upTo == mNumber)
        return latest.isRepeated;
    latest = {mNumber, isRepeated(folded(name))};
    return latest.isRepeated;
}

bool WrittenTexts::isRepeated(std::string_view name) const {
    const auto longer = mSorted.lower_bound(name);
    if (longer != mSorted.end() &&
        (*longer == name || (name.size() >= ANYWHERE && longer->starts_with(name))))
        return true;
    for (std::size_t at = 0; at < name.size(); ++at) {
        if (isHeldAt(at, name))
            return true;
    }
    return false;
}

/// Whether a text stands in the name from there on. The last text in front of that rest is one, or
/// ends all those that share more with the rest than it does.
bool WrittenTexts::isHeldAt(std::size_t at, std::string_view name) const {
    std::string_view rest = name.substr(at);
    for (;;) {
        auto text = mSorted.upper_bound(rest);
        if (text == mSorted.begin())
            return false;
        --text;
        std::size_t shared = sharedBy(*text, rest);
        if (shared < WORD)
            return false;
        if (shared == text->size()) {
            if (shared >= ANYWHERE || (isBorder(name, at) && isBorder(name, at + shared)))
                return true;
            --shared;
        }
        rest = rest.substr(0, shared);
    }
}

} // namespace import
