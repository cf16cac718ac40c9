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
    mBeside.reset();
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
    if (goesBeside()) {
        mBeside->add(mNest, mTrace, mSlots);
    } else {
        finish();
        merge_recording(mAnalysis, mNest, mTrace, *mTarget);
    }
}

void NestReader::analyseBeside(int from) {
    mBeside.reset();
    mBesideFrom = from;
}

void NestReader::finish() {
    if (!mBeside)
        return;
    const std::unique_ptr<AnalysisThread> ending = std::move(mBeside);
    ending->finish();
    ending->makeSlots(mSlots);
}

/// Whether recordings are analysed on a thread of their own, which starts once that pays. Those
/// that wait have as many slots each as there are keys, so there must not be too many.
bool NestReader::goesBeside() {
    constexpr int MOST_KEYS = 4096;
    if (mBeside)
        return mSlots <= MOST_KEYS;
    if (mEventCount < mBesideFrom || mTarget->size() > MOST_KEYS || !mAnalysis.mayRunBeside())
        return false;
    mSlots = mTarget->size();
    try {
        mBeside = std::make_unique<AnalysisThread>(mAnalysis, *mTarget);
    } catch (const std::exception&) {
        mBesideFrom = NEVER;
    }
    return mBeside != nullptr;
}

/// The branch index of a key, reserved in the target at the key's first appearance; -1 when memory
/// is exhausted.
int NestReader::indexOf(const QString& key) {
    if (const KeyTable::Entry* known = mKeys.find(key))
        return known->second;
    const int index = mBeside ? mSlots : mTarget->size();
    try {
        mKeys.set(key, index);
    } catch (const std::exception&) {
        return -1;
    }
    if (addSlot())
        return index;
    mKeys.remove(key);
    return -1;
}

/// Reserves the next index. While the target is another thread's, that reserves it there.
bool NestReader::addSlot() {
    if (!mBeside)
        return mTarget->addSlot();
    ++mSlots;
    return true;
}

} // namespace domain
