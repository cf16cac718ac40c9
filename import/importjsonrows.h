#pragma once

#include "import/importbytes.h"
#include "import/importjson.h"
#include "import/importjsonscanner.h"
#include "import/importrows.h"

#include <string>
#include <vector>

namespace import {

/// The objects of JSON lines, or of one array, as rows. A column is a path of members with dots
/// between; a name that holds dots itself is found as well. What a row does not have is an empty
/// cell.
class JsonRows : public Rows {
public:
    /// `bytes` is not owned and outlives the rows.
    explicit JsonRows(Bytes& bytes)
        : mBytes(bytes)
        , mScanner(bytes) {}

    QString choose(const std::vector<QString>& columns) override;
    Next next() override;

    std::vector<QString> columns() const override { return {}; }

    QString fault() const override { return mBytes.fault(); }

private:
    Next take();
    std::string_view cellOf(const JsonValue& row, std::size_t column);

    Bytes& mBytes;
    JsonScanner mScanner;
    Json mJson;
    std::vector<std::string> mPaths;
    std::vector<std::string> mNumbers; // texts of cells that are none, by column
    bool mIsHeld = false;
};

} // namespace import
