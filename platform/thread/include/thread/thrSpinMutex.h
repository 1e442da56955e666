// thrSpinMutex: a mutex for a few instructions, held shared or exclusively.
//
// A thread that has to wait repeats its attempt, and gives up its time slice after some attempts.
// It is not recursive, and waiting threads are served in no particular order.
#pragma once

#include <utils/utExport.h>

#include <atomic>

/// How a mutex is held.
enum thrLockType : int {
    thr_lock_none = 0,      // not at all
    thr_lock_shared = 1,    // together with other shared holders
    thr_lock_exclusive = 2  // alone
};

class UT_EXPORT thrSpinMutex {
  public:
    constexpr thrSpinMutex() noexcept = default;
    thrSpinMutex(const thrSpinMutex&) = delete;
    thrSpinMutex& operator=(const thrSpinMutex&) = delete;

    /// Waits until the mutex can be held in that way; returns at once for thr_lock_none.
    void lock(thrLockType type) const noexcept;

    /// True, and the mutex is held, if that is possible without waiting.
    bool try_lock(thrLockType type) const noexcept;

    /// Releases what this thread locked with the same type.
    void unlock(thrLockType type) const noexcept;

  private:
    mutable std::atomic<int> m_holders{0};  // number of shared holders; -1: one exclusive holder
};
