#pragma once

#include "import/importjson.h"
#include "import/importlocator.h"
#include "import/importreader.h"

#include <optional>
#include <string_view>

namespace import {

/// Reads scripts of user steps: those that the recorder of a browser's developer tools exports (one
/// recording a file) and those of a browser's test editor, `.side` (one a test). A click is a press
/// and release, a double click two of each, a choice in a menu a choice; typing is a press on its
/// field, and what was typed is not looked at.
class ScriptReader : public Reader {
public:
    enum class Kind { Recorder, Side };

    /// `fields`: whether typing into a field is a press on it. `rules` is not owned and outlives
    /// the reader.
    ScriptReader(Kind kind, const Rules& rules, bool fields)
        : mKind(kind)
        , mNaming(rules.naming())
        , mFields(fields) {}

    outcome read(QIODevice& source, Collector& into) override;

private:
    const Kind mKind;
    const naming& mNaming;
    const bool mFields;
};

} // namespace import
