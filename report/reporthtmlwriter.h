#pragma once

#include "report/reportwriter.h"

class QJsonObject;

namespace report {

/// One page for browsers, with all that it needs: the picture and the table of patterns, to be
/// sorted and filtered. Its data are described in report/page/data.js. Without any report there is
/// no page.
class HtmlWriter : public Writer {
public:
    using Writer::Writer;
    void write(const Findings& findings) override;
    void end() override;
    void compare(const Comparison& comparison) override;

private:
    void add(const QJsonObject& report);

    bool mHasBegun = false;
};

} // namespace report
