#include <apsl/apAlarm.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

struct Booking {
    apAlarm::Handler handler;
    Clock::duration period;
    Clock::time_point due;
};

bool due_earlier(const Booking& a, const Booking& b) { return a.due < b.due; }

class Schedule {
  public:
    // Throws when the thread cannot be started, or when there is no memory.
    void add(apAlarm::Handler handler, Clock::duration period) {
        const std::lock_guard lock(m_mutex);
        if (!m_running) std::thread([this] { run(); }).detach();
        m_running = true;
        m_bookings.push_back({handler, period, Clock::now() + period});
        m_changed.notify_all();
    }

    int remove(apAlarm::Handler handler) {
        const std::lock_guard lock(m_mutex);
        return static_cast<int>(std::erase_if(
            m_bookings, [handler](const Booking& each) { return each.handler == handler; }));
    }

  private:
    [[noreturn]] void run() {
        std::unique_lock lock(m_mutex);
        while (true) {
            const auto next = std::min_element(m_bookings.begin(), m_bookings.end(), due_earlier);
            if (next == m_bookings.end()) {
                m_changed.wait(lock);
            } else if (next->due > Clock::now()) {
                m_changed.wait_until(lock, Clock::time_point(next->due));
            } else {
                call(*next, lock);
            }
        }
    }

    // Unlocked during the call, so that the handler may book and cancel.
    static void call(Booking& booking, std::unique_lock<std::mutex>& lock) {
        booking.due += booking.period;
        const apAlarm::Handler handler = booking.handler;
        lock.unlock();
        handler(ap_alarm_due);
        lock.lock();
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Booking> m_bookings;
    bool m_running = false;
};

Schedule& schedule() {
    // Never deleted: its thread runs until the process ends.
    static auto* const only = new Schedule;
    return *only;
}

}  // namespace

int apAlarm::book_alarm_call(int seconds, Handler handler) {
    if (handler == nullptr || seconds < 1) return -1;
    try {
        schedule().add(handler, std::chrono::seconds(seconds));
    } catch (const std::exception&) {
        return -1;
    }
    return 0;
}

int apAlarm::cancel_alarm_calls(Handler handler) {
    const int cancelled = schedule().remove(handler);
    for (int i = 0; i < cancelled; ++i) handler(ap_alarm_cancelled);
    return cancelled;
}
