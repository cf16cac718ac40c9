#pragma once

#include "import/importrrwebevent.h"
#include "import/importrules.h"

namespace import {

/// Reads the JSON of one event after the other. Takes no more memory than what an event's nodes
/// need, and no recursion for nested ones.
class RrwebParser {
public:
    /// Attributes that nobody makes names from are left out. `naming` outlives the parser.
    explicit RrwebParser(const naming& naming)
        : mNaming(naming) {}

    /// Reads the `size` bytes at `text`, behind which one more can be written to. They are changed
    /// and must outlive the event. Null when they are no JSON value. Valid until the next call.
    const rrweb_event* parse(char* text, std::size_t size);

private:
    class Handler;

    const naming& mNaming;
    rrweb_event mEvent;
};

} // namespace import
