#include "ui/picture/uistrokes.h"

#include "ui/picture/uislice.h"

#include <QBitArray>

#include <new>

namespace ui {

namespace {

constexpr int PLACING_TIME = 300; // nanoseconds a stroke

} // namespace

Strokes::Strokes(const LeafList& leaves, double radius)
    : mRadius(radius)
    , mTable(leaves) {}

void Strokes::forget() {
    mTable.clear();
    forgetPlaces();
}

void Strokes::forgetPlaces() {
    mPlaced.clear();
    mPositions.clear();
    mPlacedOn.clear();
}

bool Strokes::place(Slice& slice) {
    try {
        return mTable.advance(slice) && placeAll(slice);
    } catch (const std::bad_alloc&) {
        forget(); // nothing stays half done
        throw;
    }
}

bool Strokes::placeAll(Slice& slice) {
    const QList<StrokeTable::entry>& entries = mTable.entries();
    mPositions.reserve(entries.size());
    while (mPositions.size() < entries.size()) {
        mPositions.append(place(entries[mPositions.size()]));
        if (slice.isOver(PLACING_TIME))
            return false;
    }
    mPlacedOn.clear();
    return true;
}

int Strokes::place(const StrokeTable::entry& entry) {
    const QPointF from = entry.from->mPos;
    const QPointF to = entry.to->mPos;
    const way along{from.x(), from.y(), to.x(), to.y()};
    const auto found = mPlacedOn.constFind(along);
    if (found != mPlacedOn.cend()) {
        placed& known = mPlaced[*found];
        if (known.onlyUser != entry.onlyUser)
            known.onlyUser = nullptr;
        return *found;
    }
    const std::optional<stroke> curve = stroke_between(from, to, mRadius);
    if (!curve)
        return -1;
    mPlacedOn.insert(along, size());
    mPlaced.append({*curve, entry.to, entry.onlyUser});
    return size() - 1;
}

bool Strokes::isOnlyIn(int position, const domain::Pattern* pattern) const {
    return pattern && mPlaced[position].onlyUser == pattern;
}

QList<int> Strokes::of(const domain::Pattern& pattern) const {
    QList<int> strokes;
    QBitArray seen(mPlaced.size());
    for (const int inTable : mTable.strokesOf(pattern)) {
        const int position = mPositions[inTable];
        if (position < 0 || seen.testBit(position))
            continue;
        seen.setBit(position);
        strokes.append(position);
    }
    return strokes;
}

} // namespace ui
