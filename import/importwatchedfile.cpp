#include "import/importwatchedfile.h"

#include <unistd.h>

#include <cstdio>

namespace import {

namespace {

constexpr qint64 PAUSE = 300; // milliseconds between two lines
constexpr qint64 MEGABYTE = 1 << 20;

} // namespace

WatchedFile::WatchedFile(const QString& path)
    : QFile(path)
    , mIsWatched(::isatty(STDERR_FILENO) == 1) {
    mSince.start();
}

WatchedFile::~WatchedFile() {
    if (mHasSaid)
        std::fputs("\r\x1b[K", stderr);
}

qint64 WatchedFile::readData(char* data, qint64 size) {
    const qint64 count = QFile::readData(data, size);
    mRead += count > 0 ? count : 0;
    if (mIsWatched && mSince.elapsed() > PAUSE)
        say();
    return count;
}

void WatchedFile::say() {
    mSince.restart();
    mHasSaid = true;
    const qint64 all = isSequential() ? 0 : size();
    if (all > 0)
        std::fprintf(stderr, "\r%s: %lld %% ", qPrintable(fileName()),
                     static_cast<long long>(100 * mRead / all));
    else
        std::fprintf(stderr, "\r%s: %lld MB ", qPrintable(fileName()),
                     static_cast<long long>(mRead / MEGABYTE));
}

} // namespace import
