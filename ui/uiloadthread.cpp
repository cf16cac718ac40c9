#include "ui/uiloadthread.h"

#include "domain/domainlog.h"
#include "ui/uitsan.h"

#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>

#include <exception>

namespace ui {

LoadThread::LoadThread(QObject* parent)
    : QThread(parent)
    , mReader(mAnalysis) {}

LoadThread::~LoadThread() {
    {
        const QMutexLocker locker(&mWaitLock);
        mQuit = true;
        mInputChanged = true;
        mWaitCondition.wakeOne();
    }
    QThread::wait();
    tsan::joined(this);
}

bool LoadThread::load(const QUrl& url) {
    return queue(url, nullptr);
}

bool LoadThread::merge(const QUrl& url, const domain::Nest& nest) {
    return queue(url, &nest);
}

bool LoadThread::getOutput(domain::Nest& nest, QUrl& url) {
    const QMutexLocker locker(&mListLock);
    try {
        LoadIo* newest = mOutput.front();
        nest.swap(newest->mNest);
        url = newest->mUrl;
        mOutput.moveToRetired(mInput);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void LoadThread::run() {
    {
        const QMutexLocker locker(&mWaitLock);
        if (mQuit)
            return;
    }
    do
        loop();
    while (waitForInput());
    tsan::ends(this);
}

bool LoadThread::queue(const QUrl& url, const domain::Nest* mergeInto) {
    try {
        const QMutexLocker locker(&mListLock);
        LoadIo* io = mInput.pushFront();
        io->clear();
        io->mUrl = url;
        if (mergeInto)
            io->setToMerge(*mergeInto);
    } catch (const std::exception&) {
        return false;
    }
    const QMutexLocker locker(&mWaitLock);
    onInputChanged();
    return true;
}

void LoadThread::onInputChanged() {
    if (isRunning()) {
        mInputChanged = true;
        mWaitCondition.wakeOne();
    } else {
        start(QThread::LowPriority);
    }
}

/// Reads one request on the worker thread. False when there is no file to read or no memory for
/// it.
bool LoadThread::load(LoadIo& io) {
    try {
        const QString path = io.mUrl.toLocalFile();
        if (!QFileInfo(path).isFile()) // a pipe or a device might never come to an end
            return false;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return false;
        mReader.begin(io.mNest);
        domain::read_log(file, mReader);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

/// One pass: reads the newest of the waiting requests.
void LoadThread::loop() {
    LoadIoList requests;
    {
        const QMutexLocker locker(&mListLock);
        mInput.moveTo(requests);
    }
    const bool loaded = !requests.isEmpty() && load(*requests.front());
    {
        const QMutexLocker locker(&mListLock);
        if (loaded)
            requests.moveFrontTo(mOutput);
        requests.moveToRetired(mInput);
    }
    if (loaded)
        announce();
}

/// Without memory for the signal the result waits for the next one.
void LoadThread::announce() {
    try {
        Q_EMIT loadFinished();
    } catch (const std::exception&) {
        return;
    }
}

/// Sleeps until a request has come; false when the thread is to end.
bool LoadThread::waitForInput() {
    const QMutexLocker locker(&mWaitLock);
    if (!mInputChanged) {
        tsan::before_wait(mWaitLock);
        mWaitCondition.wait(&mWaitLock);
        tsan::after_wait(mWaitLock);
    }
    mInputChanged = false;
    return !mQuit;
}

} // namespace ui
