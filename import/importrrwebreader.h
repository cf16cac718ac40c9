#pragma once

#include "import/importreader.h"
#include "import/importrules.h"

namespace import {

/// Reads recordings of web pages by rrweb, as events in any of the wrappings in which they are
/// handed out: what was pressed, released and chosen, named by the elements of the page, at its
/// place on the page. Every window or session is a recording; those of a file may take turns.
class RrwebReader : public Reader {
public:
    /// `naming` outlives the reader.
    explicit RrwebReader(const naming& naming)
        : mNaming(naming) {}

    outcome read(QIODevice& source, Collector& into) override;

private:
    const naming& mNaming;
};

} // namespace import
