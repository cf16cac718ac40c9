#pragma once

#include "report/reportwriter.h"

namespace report {

/// JSON lines: one object per log, every slot of the nest in index order.
class JsonWriter : public Writer {
public:
    using Writer::Writer;
    void write(const Log& log) override;

private:
    void writeBranch(int index, const domain::Branch& branch);
    void writeBounds(const QRectF& bounds);
    void writePatterns(const domain::Branch& branch);
    void writeSequence(const domain::Pattern& pattern);
};

} // namespace report
