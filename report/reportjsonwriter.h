#pragma once

#include "report/reportwriter.h"

namespace report {

/// JSON lines: one object per log, every slot of the nest in index order.
class JsonWriter : public Writer {
public:
    using Writer::Writer;
    void write(const Findings& findings) override;

private:
    void writeKey(const key_findings& key);
    void writeBounds(const QRectF& bounds);
    void writePatterns(const Patterns& patterns);
    void writeSequence(const domain::Pattern& pattern);
};

} // namespace report
