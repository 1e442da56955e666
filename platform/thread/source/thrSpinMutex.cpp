#include <thread/thrSpinMutex.h>

#include <sched.h>

namespace {

// Attempts before a waiting thread gives up its time slice: about the time of a short section.
constexpr int attempts_per_time_slice = 64;

constexpr int exclusive_holder = -1;

}  // namespace

void thrSpinMutex::lock(thrLockType type) const noexcept {
    for (int attempt = 1; !try_lock(type); ++attempt) {
        if (attempt % attempts_per_time_slice == 0) sched_yield();
    }
}

bool thrSpinMutex::try_lock(thrLockType type) const noexcept {
    if (type == thr_lock_none) return true;
    int holders = m_holders.load(std::memory_order_relaxed);
    if (type == thr_lock_exclusive ? holders != 0 : holders < 0) return false;
    const int wanted = type == thr_lock_exclusive ? exclusive_holder : holders + 1;
    return m_holders.compare_exchange_strong(holders, wanted, std::memory_order_acquire,
                                             std::memory_order_relaxed);
}

void thrSpinMutex::unlock(thrLockType type) const noexcept {
    if (type == thr_lock_none) return;
    m_holders.fetch_sub(type == thr_lock_exclusive ? exclusive_holder : 1,
                        std::memory_order_release);
}
