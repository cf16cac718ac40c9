#include "import/importcsvrows.h"

#include "import/importscan.h"

#include <algorithm>
#include <array>

namespace import {

namespace {

constexpr std::size_t LONGEST_ROW = std::size_t(64) << 20; // bytes
constexpr std::size_t MOST_COLUMNS = 100'000;
constexpr std::array<char, 4> SEPARATORS{',', ';', '\t', '|'};

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

/// What stands before the closing quote, with one quote for each pair.
std::string_view unquoted(char* from, const char* to) {
    char* end = from;
    for (const char* at = from; at != to; ++at) {
        if (*at == '"' && (++at == to || *at != '"'))
            break;
        *end++ = *at;
    }
    return {from, static_cast<std::size_t>(end - from)};
}

} // namespace

CsvRows::CsvRows(Bytes& bytes)
    : mBytes(bytes)
    , mEnds(MOST_COLUMNS) {}

QString CsvRows::choose(const std::vector<QString>& columns) {
    tellSeparator();
    if (nextRow() == Next::Row) {
        for (std::size_t i = 0; i < mCount; ++i) {
            const std::string_view name = textOf(i);
            mColumns.push_back(
                QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())).trimmed());
        }
    }
    for (const QString& column : columns) {
        const auto found = std::find(mColumns.begin(), mColumns.end(), column);
        if (found == mColumns.end())
            return column;
        mChosen.push_back(static_cast<std::size_t>(found - mColumns.begin()));
    }
    mCells.resize(mChosen.size());
    mEnds.resize(mColumns.size() + 1); // one more tells a row that has too many
    return {};
}

void CsvRows::tellSeparator() {
    mBytes.more();
    const std::string_view held = mBytes.held();
    const auto begin = std::find_if_not(held.begin(), held.end(), isLineEnd);
    const auto end = std::find_if(begin, held.end(), isLineEnd);
    const auto timesOf = [&](char c) { return std::count(begin, end, c); };
    mSeparator = *std::max_element(SEPARATORS.begin(), SEPARATORS.end(),
                                   [&](char a, char b) { return timesOf(a) < timesOf(b); });
}

Rows::Next CsvRows::next() {
    const Next next = nextRow();
    if (next != Next::Row)
        return next;
    if (mCount != mColumns.size())
        return Next::Odd;
    for (std::size_t i = 0; i < mChosen.size(); ++i)
        mCells[i] = textOf(mChosen[i]);
    return next;
}

Rows::Next CsvRows::nextRow() {
    mBytes.use(mAt);
    beginRow();
    bool isTooLong = false;
    while (!scan(mBytes.held())) {
        if (mAt > LONGEST_ROW) {
            isTooLong = true;
            mBytes.use(mAt);
            mAt = 0;
        }
        if (mBytes.more())
            continue;
        if (mState == At::Quoted)
            return Next::Cut;
        if (mAt == mFrom && !isTooLong)
            return Next::End;
        endCell();
        break;
    }
    return isTooLong ? Next::Odd : Next::Row;
}

void CsvRows::beginRow() {
    mFrom = mAt = mCount = 0;
    mState = At::CellStart;
    mIsEnded = false;
}

/// Goes on to the end of the row, true, or to that of what is held.
bool CsvRows::scan(std::string_view text) {
    while (mAt < text.size() && !mIsEnded) {
        switch (mState) {
        case At::CellStart:
            scanCellStart(text[mAt]);
            break;
        case At::Plain:
            scanPlain(text);
            break;
        case At::Quoted:
            scanQuoted(text);
            break;
        case At::QuoteInQuoted:
            scanBehindQuote(text[mAt]);
            break;
        }
    }
    return mIsEnded;
}

void CsvRows::scanCellStart(char c) {
    if (isLineEnd(c) && mCount == 0) { // a blank line, or the second half of a line's end
        mFrom = ++mAt;
        return;
    }
    mState = c == '"' ? At::Quoted : At::Plain;
    mAt += c == '"' ? 1 : 0;
}

/// The rest of the cell, and the plain cells that follow it.
void CsvRows::scanPlain(std::string_view text) {
    CellEnds ends(text, mAt, mSeparator);
    std::size_t count = mCount; // in registers
    std::size_t at = ends.next();
    mState = At::Plain;
    while (at < text.size()) {
        if (count < mEnds.size())
            mEnds[count++] = at;
        mIsEnded = text[at] != mSeparator;
        ++at;
        if (mIsEnded || at == text.size() || text[at] == '"') {
            mState = At::CellStart;
            break;
        }
        at = ends.next();
    }
    mCount = count;
    mAt = at;
}

void CsvRows::scanQuoted(std::string_view text) {
    const std::size_t quote = std::min(text.find('"', mAt), text.size());
    mAt = std::min(quote + 1, text.size());
    if (quote < text.size())
        mState = At::QuoteInQuoted;
}

/// What stands behind a closing quote belongs to no cell.
void CsvRows::scanBehindQuote(char c) {
    mState = c == '"' ? At::Quoted : At::Plain;
    mAt += c == '"' ? 1 : 0;
}

void CsvRows::endCell() {
    if (mCount < mEnds.size())
        mEnds[mCount++] = mAt;
}

/// The cell's text; what quotes stand around and within it is settled in place.
std::string_view CsvRows::textOf(std::size_t cell) {
    const std::size_t begin = cell == 0 ? mFrom : mEnds[cell - 1] + 1;
    char* const from = mBytes.data() + begin;
    char* const to = mBytes.data() + mEnds[cell];
    if (from == to || *from != '"')
        return {from, static_cast<std::size_t>(to - from)};
    return unquoted(from + 1, to);
}

} // namespace import
