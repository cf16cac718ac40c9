#pragma once

#include "import/importreader.h"
#include "import/importtable.h"

#include <QString>

namespace import {

/// Reads XES logs (IEEE 1849): a recording for each trace, a press for each event that completed,
/// called by `concept:name` or the attributes that the table's key names. Attributes of attributes
/// are passed over.
class XesReader : public Reader {
public:
    /// `lifecycle`: the transition that counts; events without one always do.
    XesReader(const table& table, const QString& lifecycle)
        : mTable(table)
        , mLifecycle(lifecycle) {}

    outcome read(QIODevice& source, Collector& into) override;

private:
    const table& mTable;
    QString mLifecycle;
};

} // namespace import
