#include "import/importrrwebevents.h"

#include "import/importpacked.h"

#include <algorithm>
#include <array>
#include <optional>

namespace import {

namespace {

constexpr std::size_t LARGEST_EVENT = std::size_t(64) << 20; // bytes of an event
constexpr std::size_t LARGEST_ID = 1 << 20;
constexpr std::size_t LOOK_AHEAD = 1 << 16; // bytes that tell events from what wraps them
constexpr std::size_t MOST_LEVELS = 16;

template <std::size_t SIZE>
bool isAmong(std::string_view name, const std::array<std::string_view, SIZE>& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

constexpr std::array<std::string_view, 3> OF_EVENTS{"type", "timestamp", "delay"};
constexpr std::array<std::string_view, 6> OF_WRAPPERS{
    "events", "session", "snapshots", "snapshotsByWindowId", "window_id", "version"};
constexpr std::array<std::string_view, 6> OF_EVENT_DATA{"source", "node", "href",
                                                        "width",  "tag",  "plugin"};
constexpr std::array<std::string_view, 3> LISTS{"events", "data", "snapshots"};
constexpr std::array<std::string_view, 5> IDS{"window_id", "windowId", "session_id", "sessionId",
                                              "id"};

/// Looks at the names of an object, and at those of its `data`, as far as its text is at hand.
class Look {
public:
    explicit Look(std::string_view text)
        : mText(text) {}

    /// Whether it is no event but wraps some; empty when more of its text must be seen.
    std::optional<bool> isWrapper() {
        for (; mAt < mText.size(); ++mAt) {
            const char c = mText[mAt];
            if (c == '"') {
                const std::string_view text = takeString();
                if (!isName())
                    continue;
                if (const auto told = tell(text))
                    return told;
            } else if (c == '{' || c == '[') {
                ++mDepth;
                if (c == '[' && mDepth == 2 && mIsData)
                    return true;
            } else if ((c == '}' || c == ']') && --mDepth == 0) {
                return false;
            }
        }
        return std::nullopt;
    }

private:
    /// Up to its end quote, where the look stands then.
    std::string_view takeString() {
        const std::size_t from = ++mAt;
        while (mAt < mText.size() && mText[mAt] != '"')
            mAt += mText[mAt] == '\\' ? 2 : 1;
        mAt = std::min(mAt, mText.size());
        return mText.substr(from, mAt - from);
    }

    bool isName() const {
        const std::size_t next = mText.find_first_not_of(" \t\r\n", mAt + 1);
        return next < mText.size() && mText[next] == ':';
    }

    std::optional<bool> tell(std::string_view name) {
        if (mDepth == 1) {
            mIsData = name == "data";
            if (isAmong(name, OF_WRAPPERS))
                return true;
            if (isAmong(name, OF_EVENTS))
                return false;
        } else if (mDepth == 2 && mIsData) {
            if (name.starts_with("snapshots"))
                return true;
            if (isAmong(name, OF_EVENT_DATA))
                return false;
        }
        return std::nullopt;
    }

    std::string_view mText;
    std::size_t mAt = 0;
    int mDepth = 0;
    bool mIsData = false;
};

} // namespace

RrwebEvents::Next RrwebEvents::next() {
    if (mIsHeld)
        mScanner.finishValue();
    mIsHeld = false;
    mIsPacked = false;
    Next found = Next::End;
    while (!step(found)) {
    }
    return found;
}

/// Goes on by a bracket, a member or an event. False when nothing was found yet.
bool RrwebEvents::step(Next& found) {
    found = Next::Cut;
    const bool inObject = !mLevels.empty() && !mLevels.back().isArray;
    switch (mScanner.peek()) {
    case JsonScanner::Next::Array:
        if (mLevels.size() >= MOST_LEVELS) {
            found = mScanner.skipValue() ? Next::Odd : Next::Cut;
            return true;
        }
        enter(true, false);
        return false;
    case JsonScanner::Next::Object:
        if (isWrapper() && mLevels.size() < MOST_LEVELS) {
            enter(false, false);
            return false;
        }
        found = take();
        return true;
    case JsonScanner::Next::EndOfArray:
    case JsonScanner::Next::EndOfObject:
        leave();
        return false;
    case JsonScanner::Next::String:
        if (inObject)
            return !takeMember();
        found = unpack();
        return true;
    case JsonScanner::Next::End:
        found = mLevels.empty() ? Next::End : Next::Open;
        return true;
    default:
        found = mScanner.skipValue() ? Next::Odd : Next::Cut;
        return true;
    }
}

void RrwebEvents::enter(bool isArray, bool isByWindow) {
    mScanner.step();
    mLevels.push_back({isArray, isByWindow, mStream});
}

void RrwebEvents::leave() {
    mScanner.step();
    if (mLevels.empty())
        return;
    mStream = mLevels.back().stream;
    mLevels.pop_back();
}

bool RrwebEvents::isWrapper() {
    for (;;) {
        const auto told = Look(mBytes.held()).isWrapper();
        if (told || mBytes.held().size() >= LOOK_AHEAD || !mBytes.more())
            return told.value_or(false);
    }
}

/// A member of a wrapper. False when the text ends within it.
bool RrwebEvents::takeMember() {
    std::string name;
    if (!mScanner.takeName(name))
        return false;
    const bool isByWindow = mLevels.back().isByWindow;
    const JsonScanner::Next value = mScanner.peek();
    if (value == JsonScanner::Next::Array && (isByWindow || isAmong(name, LISTS))) {
        enter(true, false);
        if (isByWindow)
            mStream = name;
        return true;
    }
    const bool isWindows = name == "snapshotsByWindowId";
    if (value == JsonScanner::Next::Object && (isWindows || name == "data") &&
        mLevels.size() < MOST_LEVELS) {
        enter(false, isWindows);
        return true;
    }
    if (name == "session" || isAmong(name, IDS))
        return takeId();
    return mScanner.skipValue();
}

/// The id of a window or session, or an object that has one.
bool RrwebEvents::takeId() {
    std::string_view text;
    switch (mScanner.takeValue(text, LARGEST_ID)) {
    case JsonScanner::Taken::TooLarge:
        return true;
    case JsonScanner::Taken::Cut:
        return false;
    case JsonScanner::Taken::Whole:
        break;
    }
    const JsonValue* value = mJson.parse(mScanner.data(), text.size());
    if (value && value->IsObject())
        value = member(*value, "id");
    if (value && value->IsString())
        mStream = import::text(*value);
    else if (value && value->IsInt64())
        mStream = std::to_string(value->GetInt64());
    mScanner.finishValue();
    return true;
}

RrwebEvents::Next RrwebEvents::take() {
    std::string_view text;
    switch (mScanner.takeValue(text, LARGEST_EVENT)) {
    case JsonScanner::Taken::TooLarge:
        return Next::TooLarge;
    case JsonScanner::Taken::Cut:
        return Next::Cut;
    case JsonScanner::Taken::Whole:
        break;
    }
    mIsHeld = true;
    mSize = text.size();
    return Next::Event;
}

/// An event that stands there as a text: packed, or as it is.
RrwebEvents::Next RrwebEvents::unpack() {
    const Next taken = take();
    if (taken != Next::Event)
        return taken;
    const JsonValue* const value = mJson.parse(mScanner.data(), mSize);
    const std::string_view text = value ? import::text(*value) : std::string_view();
    mIsPacked = !text.starts_with('{');
    auto plain = mIsPacked ? unpacked(text, LARGEST_EVENT) : std::string(text);
    mScanner.finishValue();
    mIsHeld = false;
    if (!plain)
        return Next::Unpacked;
    mPlain = std::move(*plain);
    mSize = mPlain.size();
    return Next::Event;
}

} // namespace import
