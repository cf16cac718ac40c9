#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace import {

/// The rows of a table, one at a time.
class Rows {
public:
    enum class Next {
        Row,
        End,
        Odd, ///< A row that is none: other columns than the header, no object, too long.
        Cut, ///< The text ends within a row; nothing follows.
    };

    virtual ~Rows() = default;

    /// Must be called once, before the first `next`: which columns are of interest. Empty, or the
    /// name of a column that the table does not have.
    virtual QString choose(const std::vector<QString>& columns) = 0;

    virtual Next next() = 0;

    /// The cell of a chosen column, by its place in `choose`; UTF-8, valid until the next row.
    std::string_view cell(std::size_t column) const { return mCells[column]; }

    /// The columns that there are, for an error to name; empty where rows have no header.
    virtual std::vector<QString> columns() const = 0;

    /// Why the text could not be read to its end; empty when it was.
    virtual QString fault() const = 0;

protected:
    std::vector<std::string_view> mCells; ///< Of the row, in the order of `choose`.
};

} // namespace import
