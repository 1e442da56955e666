// thrSpinLock: holds a thrSpinMutex for the length of a scope.
#pragma once

#include <thread/thrSpinMutex.h>

class thrSpinLock {
  public:
    /// Waits for `mutex` and holds it in the way of `type` until the lock is destroyed.
    thrSpinLock(thrLockType type, const thrSpinMutex& mutex) noexcept
        : m_type(type), m_mutex(mutex) {
        m_mutex.lock(m_type);
    }
    thrSpinLock(const thrSpinLock&) = delete;
    thrSpinLock& operator=(const thrSpinLock&) = delete;
    ~thrSpinLock() { m_mutex.unlock(m_type); }

  private:
    thrLockType m_type;
    const thrSpinMutex& m_mutex;
};
