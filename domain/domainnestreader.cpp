#include "domain/domainnestreader.h"

#include "domain/domainsametext.h"
#include "json/jsonstack.h"

#include <exception>

namespace domain {

namespace {

const QString DOWN_SZ = QStringLiteral("down");
const QString UP_SZ = QStringLiteral("up");
const QString MENU_SZ = QStringLiteral("menu");

// Positions in an event array.
constexpr int KEY_AT = 1;
constexpr int X_AT = 2;
constexpr int Y_AT = 3;

int gestureOf(const QString& name) {
    if (is_same_text(name, DOWN_SZ))
        return GESTURE_DOWN;
    if (is_same_text(name, UP_SZ))
        return GESTURE_UP;
    if (is_same_text(name, MENU_SZ))
        return GESTURE_MENU;
    return GESTURE_NONE;
}

double singlePrecision(double value) {
    return static_cast<double>(static_cast<float>(value));
}

} // namespace

NestReader::NestReader(Analysis& analysis)
    : mAnalysis(analysis) {}

bool NestReader::begin(Nest& target) {
    mTarget = &target;
    mKeys.clear();
    mRecordingCount = 0;
    mEventCount = 0;
    for (int i = 0; i < target.size(); ++i) {
        const Branch* branch = target.branchAt(i);
        if (branch && branch->mGesture >= 0 && branch->isValid())
            mKeys.set(branch->mKey, i);
    }
    return true;
}

void NestReader::startObject(json::Stack& stack, const QString& /*key*/) {
    stack.push(this);
    beginRecording();
}

void NestReader::endObject(json::Stack& /*stack*/) {
    endRecording();
}

void NestReader::startArray(json::Stack& stack, const QString& key) {
    stack.push(this);
    mBranch.mGesture = gestureOf(key);
    mBranch.mBounds = QRectF();
    mHasKey = false;
}

void NestReader::endArray(json::Stack& /*stack*/) {
    if (mHasKey)
        addBranch(mBranch);
    mBranch.mGesture = GESTURE_NONE;
}

void NestReader::jsonString(json::Stack& stack, const QString& /*key*/, const QString& value) {
    if (mBranch.mGesture == GESTURE_NONE || stack.arrayIndex() != KEY_AT)
        return;
    mHasKey = true;
    const KeyTable::Entry* known = mKeys.find(value);
    if (!known) // `value` may be the parser's text: the event has a key that owns its characters
        mBranch.mKey = QString(value.constData(), value.size());
    else if (mBranch.mKey.constData() != known->first.constData()) // a counted reference is dear
        mBranch.mKey = known->first;
}

void NestReader::jsonFloat(json::Stack& stack, const QString& /*key*/, double value) {
    if (mBranch.mGesture == GESTURE_NONE)
        return;
    const int position = stack.arrayIndex();
    if (position == X_AT) {
        mBranch.mBounds.setX(singlePrecision(value));
        mBranch.mBounds.setWidth(1);
    } else if (position == Y_AT) {
        mBranch.mBounds.setY(singlePrecision(value));
        mBranch.mBounds.setHeight(1);
    }
}

std::vector<QString> NestReader::keys() const {
    std::vector<QString> keys(static_cast<std::size_t>(mTarget->size()));
    mKeys.copyTo(keys);
    return keys;
}

void NestReader::beginRecording() {
    mNest.clear();
    mTrace.mIndices.setSize(0);
}

void NestReader::endRecording() {
    ++mRecordingCount;
    addNest();
}

void NestReader::addBranch(const Branch& event) {
    if (event.mGesture == GESTURE_NONE || !event.isValid())
        return;
    const int index = indexOf(event.mKey);
    if (index < 0)
        return;
    ++mEventCount;
    mNest.merge(index, event);
    if (event.mGesture != GESTURE_UP)
        mTrace.mIndices.add(index);
}

void NestReader::addNest() {
    if (mNest.size() == 0)
        return;
    mAnalysis.on(mNest, mTrace);
    for (const int i : mNest.usedSlots()) {
        Branch* branch = mNest.branchAt(i);
        if (!branch || branch->mGesture == GESTURE_NONE)
            continue;
        mTarget->take(i, *branch);
        branch->mGesture = GESTURE_NONE;
    }
    mNest.clear();
}

/// The branch index of a key, reserved in the target at the key's first appearance; -1 when memory
/// is exhausted.
int NestReader::indexOf(const QString& key) {
    if (const KeyTable::Entry* known = mKeys.find(key))
        return known->second;
    const int index = mTarget->size();
    try {
        mKeys.set(key, index);
    } catch (const std::exception&) {
        return -1;
    }
    if (mTarget->addSlot())
        return index;
    mKeys.remove(key);
    return -1;
}

} // namespace domain
