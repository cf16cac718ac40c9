#include "import/importcollector.h"

#include <cmath>

namespace import {

namespace {

constexpr std::string_view START = "(start)";
constexpr std::size_t LONGEST_KEY = 1 << 20; // bytes
constexpr int CELL_WIDTH = 120;              // pixels
constexpr int CELL_HEIGHT = 60;

/// The place of cell `number`, from 0, in a square that grows with the keys: column by column and
/// row by row around the top left corner, so that it is known without knowing how many will come.
place placeOf(int number) {
    const auto side = static_cast<int>(std::sqrt(static_cast<double>(number)));
    const int behind = number - side * side;
    const int column = behind < side ? side : behind - side;
    const int row = behind < side ? behind : side;
    return {static_cast<double>(column) * CELL_WIDTH, static_cast<double>(row) * CELL_HEIGHT};
}

} // namespace

void Collector::beginRecording() {
    endRecording();
    mIsOpen = true;
}

void Collector::endRecording() {
    if (!mIsOpen)
        return;
    ++(mHasEvents ? mRecordings : mEmptyRecordings);
    mIsOpen = false;
    mHasEvents = false;
    if (!mHow.join)
        mLog.endRecording();
}

void Collector::add(const event& event) {
    mIsOpen = true; // also what stands beside all recordings is one
    if (event.key.empty())
        return report("no key");
    if (event.key.size() > LONGEST_KEY)
        return report("key over 1 MB");
    key_entry* const key = mKeys.take(event.key, event.named);
    if (!key)
        return skip("ignored by a rule");
    if (!mHasEvents && mHow.join)
        addStart(event.time);
    mHasEvents = true;
    write(event, *key);
}

void Collector::addPress(event event) {
    event.gesture = Gesture::Down;
    add(event);
    event.gesture = Gesture::Up;
    add(event);
}

/// In the corner of the page: without a place it would be drawn outside of where the others are.
void Collector::addStart(double time) {
    if (key_entry* const key = mKeys.take(START, Named::Given))
        write({Gesture::Down, {}, Named::Given, time, place()}, *key);
}

/// Recorders that know no places often say 0, 0.
void Collector::write(event event, key_entry& key) {
    const bool hasPlace = event.at && (event.at->x != 0 || event.at->y != 0);
    if (!hasPlace && mHow.grid) {
        if (key.cell < 0)
            key.cell = mCells++;
        event.at = placeOf(key.cell);
    }
    event.key = key.key;
    mLog.add(event);
    ++mEvents;
}

} // namespace import
