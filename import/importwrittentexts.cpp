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

bool holds(std::string_view name, std::string_view text) {
    for (std::size_t at = name.find(text); at != std::string_view::npos;
         at = name.find(text, at + 1)) {
        if (text.size() >= ANYWHERE || (isBorder(name, at) && isBorder(name, at + text.size())))
            return true;
    }
    return false;
}

bool isMasking(std::string_view text) {
    return text.find_first_not_of("* ") == std::string_view::npos;
}

bool repeats(std::string_view name, std::string_view text) {
    if (name == text)
        return true;
    return (text.size() >= WORD && holds(name, text)) ||
           (name.size() >= ANYWHERE && text.starts_with(name));
}

} // namespace

void WrittenTexts::note(std::int64_t field, std::string_view text) {
    const std::string now = folded(text);
    if (now.size() < SHORTEST || isMasking(now))
        return;
    const std::int64_t first = mNumber - static_cast<std::int64_t>(mTexts.size()) + 1;
    std::int64_t& last = mLast[field];
    if (last >= first) {
        std::string& before = mTexts[static_cast<std::size_t>(last - first)].text;
        if (before.starts_with(now))
            return;
        if (now.starts_with(before))
            before.clear();
    }
    last = ++mNumber;
    mTexts.push_back({now, mNumber});
    if (mTexts.size() > MOST)
        mTexts.pop_front();
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
    const std::string shown = folded(name);
    latest.isRepeated = std::any_of(mTexts.rbegin(), mTexts.rend(), [&](const written& one) {
        return one.number > latest.upTo && !one.text.empty() && repeats(shown, one.text);
    });
    latest.upTo = mNumber;
    return latest.isRepeated;
}

} // namespace import
