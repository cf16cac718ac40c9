#pragma once

#include "import/importbytes.h"
#include "import/importjson.h"
#include "import/importjsonscanner.h"

#include <string>
#include <string_view>
#include <vector>

namespace import {

/// Finds the events of a recording in whatever its owner wrapped them: arrays, arrays of arrays,
/// objects that hold them as `events`, `data`, `snapshots` or by window, one after the other or on
/// lines of their own, and events that were packed.
class RrwebEvents {
public:
    enum class Next {
        Event,
        Odd,      ///< No event: a number, a text.
        Unpacked, ///< A packed event that cannot be unpacked.
        TooLarge,
        Cut,  ///< The text ends within an event.
        Open, ///< The text ends within a list of events, behind the last of them.
        End,
    };

    /// `bytes` is not owned and outlives the events.
    explicit RrwebEvents(Bytes& bytes)
        : mBytes(bytes)
        , mScanner(bytes) {}

    Next next();

    /// The JSON of the event, to be changed in place; one byte more can be written to. Until the
    /// next call.
    char* data() { return mIsHeld ? mScanner.data() : mPlain.data(); }

    std::size_t size() const { return mSize; }

    /// Whether it was unpacked, so that it must say in which way.
    bool isPacked() const { return mIsPacked; }

    /// The window or session that wraps the event; empty for none.
    const std::string& stream() const { return mStream; }

private:
    struct level {
        bool isArray;
        bool isByWindow;    ///< Its members are windows.
        std::string stream; ///< As it was outside.
    };

    void enter(bool isArray, bool isByWindow);
    void leave();
    bool isWrapper();
    bool step(Next& found);
    bool takeMember();
    bool takeId();
    Next take();
    Next unpack();

    Bytes& mBytes;
    JsonScanner mScanner;
    Json mJson;
    std::vector<level> mLevels;
    std::string mStream;
    std::string mPlain; // the event, when it came as a text
    std::size_t mSize = 0;
    bool mIsHeld = false;
    bool mIsPacked = false;
};

} // namespace import
