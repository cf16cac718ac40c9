#pragma once

#include "report/reportwriter.h"

#include <span>

namespace report {

/// JSON lines: one object per log, every slot of the nest in index order.
class JsonWriter : public Writer {
public:
    using Writer::Writer;
    void write(const Findings& findings) override;
    void compare(const Comparison& comparison) override;

private:
    void writeKey(const key_findings& key);
    void writeBounds(const QRectF& bounds);
    void writePatterns(const Patterns& patterns);
    void writeGroups(const Comparison& comparison);
    void writeCompared(const compared_pattern& compared);
    void writeFoundAt(const found_pattern& found);
    void writeNumbers(std::span<const int> numbers);
    void writePlaces(const domain::pattern_figures& figures);
};

} // namespace report
