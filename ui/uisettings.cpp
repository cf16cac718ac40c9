#include "ui/uisettings.h"

#include <QLockFile>
#include <QSettings>
#include <QUrl>
#include <QVariant>

namespace ui {

namespace {

constexpr int WRITTEN_WITHIN = 100; // milliseconds

/// The toolkit locks the settings while it writes them. A program killed in that moment leaves its
/// lock, and where it had not written its name into it yet, the next writer would wait for half a
/// minute. A lock that is held stays.
void dropStaleLock(const QSettings& settings) {
    QLockFile lock(settings.fileName() + QStringLiteral(".lock"));
    lock.setStaleLockTime(WRITTEN_WITHIN);
    lock.tryLock(3 * WRITTEN_WITHIN);
}

} // namespace

QUrl take_url(const QString& key) {
    QSettings settings;
    QUrl url = settings.value(key, QUrl()).toUrl();
    dropStaleLock(settings);
    settings.setValue(key, QUrl());
    settings.sync();
    return url;
}

} // namespace ui
