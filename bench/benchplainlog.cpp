#include "bench/benchplainlog.h"

#include <algorithm>

namespace bench {

namespace {

constexpr int DOWN = 1;
constexpr int UP = 2;
constexpr int MENU = 3;

int gestureOf(std::string_view name) {
    if (name == "down")
        return DOWN;
    if (name == "up")
        return UP;
    return name == "menu" ? MENU : 0;
}

} // namespace

void PlainLog::name(std::string_view name) {
    mGesture = gestureOf(name);
}

void PlainLog::startObject() {
    mRecording.clear();
    mTrace.clear();
}

void PlainLog::endObject() {
    ++mTally.recordings;
    for (std::size_t index = 0; index < mRecording.size(); ++index) {
        if (mRecording[index].gesture)
            merge(mBranches, index, mRecording[index]);
    }
}

void PlainLog::startArray() {
    mEvent.gesture = mGesture;
    mEvent.key.clear();
    mGesture = 0;
    mPosition = 0;
}

void PlainLog::endArray() {
    if (!mEvent.gesture || mEvent.key.empty())
        return;
    ++mTally.events;
    const std::size_t index = indexOf(mEvent.key);
    merge(mRecording, index, mEvent);
    if (mEvent.gesture != UP)
        mTrace.push_back(index);
    mEvent.gesture = 0;
}

void PlainLog::string(std::string_view value) {
    if (mEvent.gesture && mPosition++ == 1)
        mEvent.key = value;
}

void PlainLog::number(double value) {
    const int position = mPosition++;
    if (position == 2) {
        mEvent.left = static_cast<float>(value);
        mEvent.right = mEvent.left + 1;
    } else if (position == 3) {
        mEvent.top = static_cast<float>(value);
        mEvent.bottom = mEvent.top + 1;
    }
}

Tally PlainLog::tally() const {
    Tally tally = mTally;
    tally.branches = static_cast<int>(mBranches.size());
    return tally;
}

void PlainLog::merge(std::vector<branch>& branches, std::size_t index, const branch& other) {
    if (index >= branches.size())
        branches.resize(index + 1);
    branch& known = branches[index];
    if (!known.gesture) {
        known = other;
        return;
    }
    known.left = std::min(known.left, other.left);
    known.top = std::min(known.top, other.top);
    known.right = std::max(known.right, other.right);
    known.bottom = std::max(known.bottom, other.bottom);
}

std::size_t PlainLog::indexOf(const std::string& key) {
    return mKeys.try_emplace(key, mKeys.size()).first->second;
}

} // namespace bench
