#pragma once

#include <QMutex>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define PRINTERSLIB_THREAD_SANITIZER
#endif
#endif
#if defined(__SANITIZE_THREAD__)
#define PRINTERSLIB_THREAD_SANITIZER
#endif

#ifdef PRINTERSLIB_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

/// Holds a settings mutex until the end of the scope.
///
/// Qt isn't built for ThreadSanitizer, so the sanitizer sees nothing of QMutex; here it is told
/// what happens, and can prove the locking of the settings.
class SettingsLock
{
public:
    explicit SettingsLock(QMutex &mutex) : m_mutex(mutex)
    {
#ifdef PRINTERSLIB_THREAD_SANITIZER
        __tsan_mutex_pre_lock(&m_mutex, 0);
#endif
        m_mutex.lock();
#ifdef PRINTERSLIB_THREAD_SANITIZER
        __tsan_mutex_post_lock(&m_mutex, 0, 0);
#endif
    }

    ~SettingsLock()
    {
#ifdef PRINTERSLIB_THREAD_SANITIZER
        __tsan_mutex_pre_unlock(&m_mutex, 0);
#endif
        m_mutex.unlock();
#ifdef PRINTERSLIB_THREAD_SANITIZER
        __tsan_mutex_post_unlock(&m_mutex, 0);
#endif
    }

    SettingsLock(const SettingsLock &) = delete;
    SettingsLock &operator=(const SettingsLock &) = delete;

private:
    QMutex &m_mutex;
};
