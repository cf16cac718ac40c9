#include "import/importzip.h"

#include <QFile>

#include <minizip/unzip.h>

#include <algorithm>

namespace import {

namespace {

constexpr std::int64_t FREE_OF_RATIO = 1 << 20; // bytes that may be packed however well
constexpr std::size_t LONGEST_MEMBER_NAME = 4096;
constexpr qint64 MOST_AT_ONCE = 1 << 20;

} // namespace

void Zip::closer::operator()(void* file) const {
    unzClose(file);
}

Zip::Zip(const QString& path, const unpacking& limits)
    : mLimits(limits)
    , mFile(unzOpen64(QFile::encodeName(path).constData())) {}

Zip::~Zip() = default;

bool Zip::nextMember() {
    close();
    const int status = mIsFirst ? unzGoToFirstFile(mFile.get()) : unzGoToNextFile(mFile.get());
    mIsFirst = false;
    if (status == UNZ_OK && openMember())
        return true;
    mIsBroken = status != UNZ_END_OF_LIST_OF_FILE;
    return false;
}

bool Zip::openMember() {
    unz_file_info64 info;
    mName.resize(LONGEST_MEMBER_NAME);
    if (unzGetCurrentFileInfo64(mFile.get(), &info, mName.data(), LONGEST_MEMBER_NAME, nullptr, 0,
                                nullptr, 0) != UNZ_OK)
        return false;
    mName.resize(std::min<std::size_t>(info.size_filename, LONGEST_MEMBER_NAME));
    mPacked = static_cast<std::int64_t>(info.compressed_size);
    mUnpacked = 0;
    // A member that cannot be unpacked reads as a fault; others may be whole.
    unzOpenCurrentFile(mFile.get());
    return open(QIODevice::ReadOnly);
}

qint64 Zip::readData(char* data, qint64 size) {
    const auto count = static_cast<unsigned>(std::min(size, MOST_AT_ONCE));
    const int read = unzReadCurrentFile(mFile.get(), data, count);
    if (read < 0)
        return fail(QStringLiteral("it is damaged, or packed in a way that is not known"));
    if (read == 0 && unzCloseCurrentFile(mFile.get()) == UNZ_CRCERROR)
        return fail(QStringLiteral("it is damaged"));
    mUnpacked += read;
    if (!isWithinLimits())
        return fail(QStringLiteral("it unpacks to too much; --largest and --ratio allow more"));
    return read;
}

bool Zip::isWithinLimits() const {
    const double most = mLimits.ratio * static_cast<double>(std::max<std::int64_t>(mPacked, 1));
    return mUnpacked <= mLimits.largest &&
           (mUnpacked <= FREE_OF_RATIO || static_cast<double>(mUnpacked) <= most);
}

qint64 Zip::fail(const QString& why) {
    setErrorString(why);
    return -1;
}

qint64 Zip::writeData(const char* /*data*/, qint64 /*size*/) {
    return -1;
}

} // namespace import
