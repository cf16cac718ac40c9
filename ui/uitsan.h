#pragma once

#include <QMutex>

#if defined(__SANITIZE_THREAD__)
#include <QtCore/qtsan_impl.h>

#include <sanitizer/tsan_interface.h>
#endif

/// Tells ThreadSanitizer what happens inside the toolkit, whose library is built without it.
/// Nothing in other builds.
namespace ui::tsan {

/// Before a wait on a condition, which releases `mutex` and takes it again.
inline void before_wait([[maybe_unused]] QMutex& mutex) {
#if defined(__SANITIZE_THREAD__)
    QtTsan::mutexPreUnlock(&mutex, 0U);
    QtTsan::mutexPostUnlock(&mutex, 0U);
#endif
}

/// After that wait.
inline void after_wait([[maybe_unused]] QMutex& mutex) {
#if defined(__SANITIZE_THREAD__)
    QtTsan::mutexPreLock(&mutex, 0U);
    QtTsan::mutexPostLock(&mutex, 0U, 0);
#endif
}

/// What a thread did before it `ends` has happened for the one that `joined` it.
inline void ends([[maybe_unused]] void* thread) {
#if defined(__SANITIZE_THREAD__)
    __tsan_release(thread);
#endif
}

inline void joined([[maybe_unused]] void* thread) {
#if defined(__SANITIZE_THREAD__)
    __tsan_acquire(thread);
#endif
}

} // namespace ui::tsan
