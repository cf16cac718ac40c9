#pragma once

#include "domain/domainblackboard.h"
#include "domain/domainnest.h"
#include "domain/domainnestreader.h"
#include "ui/uiloadthreadio.h"

#include <QMutex>
#include <QThread>
#include <QUrl>
#include <QWaitCondition>

namespace ui {

/// Reads and analyses trace logs on the program's one worker thread. Of the requests that wait when
/// the worker looks, only the newest is read; what is no file or cannot be opened is dropped in
/// silence, and one that opens counts as loaded whatever it holds.
///
/// The public operations are the main thread's. The worker starts with the first request; the
/// destructor lets it finish the read it is at and joins it. `mListLock` and `mWaitLock` are never
/// held together, and neither while a file is read or the signal is emitted.
class LoadThread : public QThread {
    Q_OBJECT

public:
    explicit LoadThread(QObject* parent = nullptr);
    ~LoadThread() override;

    /// Queues a request to read `url` into an empty nest. False when memory is exhausted.
    bool load(const QUrl& url);

    /// As `load`, but the log's branches are added to a copy of `nest`.
    bool merge(const QUrl& url, const domain::Nest& nest);

    /// Collects the newest result, without a copy, and drops older ones. What `nest` held goes to
    /// the pool, to be overwritten by a later load. False, with the arguments untouched, when there
    /// is no result.
    bool getOutput(domain::Nest& nest, QUrl& url);

Q_SIGNALS:
    /// A request was read: `getOutput` may have a result. Emitted on the worker thread.
    void loadFinished();

protected:
    void run() override;

private:
    bool queue(const QUrl& url, const domain::Nest* mergeInto);
    void onInputChanged();
    bool load(LoadIo& io);
    void loop();
    void announce();
    bool waitForInput();

    QMutex mListLock; // guards mInput, mOutput
    QMutex mWaitLock; // guards mQuit, mInputChanged, the start and the wait
    QWaitCondition mWaitCondition;
    bool mQuit = false;         ///< Set once, by the destructor.
    bool mInputChanged = false; ///< A request came while the worker was running.
    LoadIoList mInput;          ///< Requests, newest first; its retired ones are the pool.
    LoadIoList mOutput;         ///< Results not collected yet, newest first.

    // The worker's alone.
    domain::Blackboard mAnalysis;
    domain::NestReader mReader; ///< Bound to `mAnalysis`.
};

} // namespace ui
