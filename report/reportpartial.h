#pragma once

#include "report/reportlog.h"
#include "report/reportwriter.h"

#include <functional>

class QIODevice;

namespace report {

/// What a part of the recordings has found, for other machines to put together. A partial is a
/// header with its version, length and check sum, and then a log with all that `Merger` needs.
/// Files of partials may be joined end to end.
class PartialWriter : public Writer {
public:
    using Writer::Writer;
    void write(const Findings& findings) override;
};

/// Reads the partials in `device`, which is open and not owned, and hands each on. Returns what is
/// wrong with them, empty when nothing is.
QString read_partials(QIODevice& device, const std::function<void(Log& part)>& take);

} // namespace report
