#pragma once

#include "import/importbytes.h"
#include "import/importrows.h"

#include <string_view>
#include <vector>

namespace import {

/// The rows of a table whose columns stand apart by a comma, semicolon, tab or bar, whichever its
/// first line has most of; its first row names the columns. Cells may stand in double quotes, where
/// two are one, and hold line breaks there (RFC 4180). Blank lines are passed over.
class CsvRows : public Rows {
public:
    /// `bytes` is not owned and outlives the rows.
    explicit CsvRows(Bytes& bytes);

    QString choose(const std::vector<QString>& columns) override;
    Next next() override;

    std::vector<QString> columns() const override { return mColumns; }

    QString fault() const override { return mBytes.fault(); }

private:
    enum class At { CellStart, Plain, Quoted, QuoteInQuoted };

    void tellSeparator();
    Next nextRow();
    void beginRow();
    bool scan(std::string_view text);
    void scanCellStart(char c);
    void scanPlain(std::string_view text);
    void scanQuoted(std::string_view text);
    void scanBehindQuote(char c);
    void endCell();
    std::string_view textOf(std::size_t cell);

    Bytes& mBytes;
    char mSeparator = ',';
    std::vector<QString> mColumns;
    std::vector<std::size_t> mChosen;

    // The row at hand: offsets within what is held.
    std::size_t mFrom = 0;
    std::vector<std::size_t> mEnds; // of the cells, and room for as many as a row may have
    std::size_t mCount = 0;         // of the cells
    At mState = At::CellStart;
    std::size_t mAt = 0;
    bool mIsEnded = false;
};

} // namespace import
