#include "domain/keyiterator.h"

namespace {

constexpr QChar SEP = u':';

} // namespace

KeyIterator::KeyIterator(const QString& key)
    : mKey(key) {}

bool KeyIterator::getNext(QStringView& part) {
    while (mPos < mKey.size() && mKey[mPos] == SEP)
        ++mPos;
    if (mPos >= mKey.size())
        return false;
    qsizetype end = mKey.indexOf(SEP, mPos);
    if (end < 0)
        end = mKey.size();
    part = QStringView(mKey).mid(mPos, end - mPos);
    mPos = end + 1;
    return true;
}
