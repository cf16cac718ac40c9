#include "import/importcsvrows.h"

#include "import/importscan.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace import {

namespace {

constexpr std::size_t LONGEST_ROW = std::size_t(64) << 20; // bytes
constexpr std::size_t MOST_COLUMNS = 100'000;
constexpr std::array<char, 4> SEPARATORS{',', ';', '\t', '|'};

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

} // namespace

CsvRows::CsvRows(Bytes& bytes)
    : mBytes(bytes)
    , mMostCells(MOST_COLUMNS) {}

QString CsvRows::choose(const std::vector<QString>& columns) {
    tellSeparator();
    if (nextRow() == Next::Row) {
        for (const span& cell : mSpans) {
            const std::string_view name = textOf(cell);
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
    mMostCells = mColumns.size() + 1; // one more tells a row that has too many
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
    if (mSpans.size() != mColumns.size())
        return Next::Odd;
    for (std::size_t i = 0; i < mChosen.size(); ++i)
        mCells[i] = textOf(mSpans[mChosen[i]]);
    return next;
}

Rows::Next CsvRows::nextRow() {
    mBytes.use(mAt);
    beginRow();
    bool isTooLong = false;
    while (!scan(mBytes.held())) {
        if (mAt > LONGEST_ROW) {
            isTooLong = true;
            mSpans.clear();
            mBytes.use(mAt);
            mCell.from = mAt = 0;
        }
        if (mBytes.more())
            continue;
        if (mState == At::Quoted)
            return Next::Cut;
        if (mAt == mCell.from && mSpans.empty() && !mCell.isQuoted)
            return isTooLong ? Next::Odd : Next::End;
        endCell();
        break;
    }
    return isTooLong ? Next::Odd : Next::Row;
}

void CsvRows::beginRow() {
    mSpans.clear();
    mCell = {};
    mState = At::CellStart;
    mAt = 0;
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
    if (isLineEnd(c) && mSpans.empty()) { // a blank line, or the second half of a line's end
        mCell.from = ++mAt;
        return;
    }
    mCell.isQuoted = c == '"';
    mState = mCell.isQuoted ? At::Quoted : At::Plain;
    mAt += mCell.isQuoted ? 1 : 0;
    mCell.from = mAt;
}

/// The rest of the cell, and the plain cells that follow it.
void CsvRows::scanPlain(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* at = text.data() + mAt;
    for (;;) {
        const char* const found = find_cell_end(at, end, mSeparator);
        mAt = static_cast<std::size_t>(found - text.data());
        if (found == end)
            return;
        endCell();
        mCell.from = ++mAt;
        at = found + 1;
        mIsEnded = *found != mSeparator;
        if (mIsEnded || at == end || *at == '"')
            return;
        mState = At::Plain;
    }
}

void CsvRows::scanQuoted(std::string_view text) {
    const auto* const quote =
        static_cast<const char*>(std::memchr(text.data() + mAt, '"', text.size() - mAt));
    if (!quote) {
        mAt = text.size();
        return;
    }
    mCell.to = static_cast<std::size_t>(quote - text.data());
    mAt = mCell.to + 1;
    mState = At::QuoteInQuoted;
}

/// What stands behind a closing quote belongs to no cell.
void CsvRows::scanBehindQuote(char c) {
    if (c != '"') {
        mState = At::Plain;
        return;
    }
    mCell.hasPairs = true;
    mState = At::Quoted;
    ++mAt;
}

void CsvRows::endCell() {
    if (!mCell.isQuoted)
        mCell.to = mAt;
    if (mSpans.size() < mMostCells)
        mSpans.push_back(mCell);
    mCell = {};
    mState = At::CellStart;
}

/// The cell's text; pairs of quotes become one in place.
std::string_view CsvRows::textOf(const span& cell) {
    char* const from = mBytes.data() + cell.from;
    char* to = mBytes.data() + cell.to;
    if (cell.hasPairs)
        to = std::unique(from, to, [](char a, char b) { return a == '"' && b == '"'; });
    return {from, static_cast<std::size_t>(to - from)};
}

} // namespace import
