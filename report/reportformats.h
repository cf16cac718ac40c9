#pragma once

#include "report/reportwriter.h"

#include <memory>
#include <vector>

namespace report {

/// A form in which reports are written.
struct output_format {
    QString name;      ///< As the command line has it.
    bool leavesOut;    ///< Long lists are cut unless everything is asked for.
    bool isAnswer;     ///< Questions and comparisons can be asked.
    int top;           ///< So many patterns unless others are asked for; 0 for all.
    bool tellsLeftOut; ///< The report says how much the questions left out.
    std::unique_ptr<Writer> (*newWriter)(Output& output, const style& style);
};

/// All of them, the default one first.
const std::vector<output_format>& output_formats();

/// Null when there is none of that name.
const output_format* find_format(const QString& name);

} // namespace report
