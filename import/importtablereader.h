#pragma once

#include "import/importreader.h"
#include "import/importtable.h"

namespace import {

/// Reads tables: comma-separated values and their like, and JSON lines.
class TableReader : public Reader {
public:
    /// `isJson`: JSON lines or an array of objects instead of separated values.
    TableReader(const table& table, bool isJson)
        : mTable(table)
        , mIsJson(isJson) {}

    outcome read(QIODevice& source, Collector& into) override;

private:
    class Pass;

    const table& mTable;
    bool mIsJson;
};

} // namespace import
