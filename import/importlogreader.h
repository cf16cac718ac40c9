#pragma once

#include "import/importreader.h"

namespace import {

/// Reads logs of Quillon's own, so that key rules can be applied to them: the recordings, events,
/// times and places as they are. A recording within another parts the events before it from those
/// behind it, and none is lost.
class LogReader : public Reader {
public:
    outcome read(QIODevice& source, Collector& into) override;
};

} // namespace import
