#include "interrupt_watch.h"

#include <atomic>
#include <csignal>
#include <mutex>

namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "the handler may only touch lock-free data");

std::mutex guard;  // of what follows
int watchers = 0;
bool has_taken_over = false;
struct sigaction earlier {};

extern "C" void note_interrupt(int) { interrupted.store(true); }

}  // namespace

void begin_interrupt_watch() {
    const std::lock_guard<std::mutex> lock(guard);
    if (watchers++ > 0) return;
    interrupted.store(false);
    if (sigaction(SIGINT, nullptr, &earlier) != 0 || earlier.sa_handler == SIG_IGN) return;
    struct sigaction ours {};
    ours.sa_handler = note_interrupt;
    // One time only, so that a second Ctrl-C ends work that does not listen; and reads and writes
    // that are under way go on as if nothing had happened.
    ours.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    sigemptyset(&ours.sa_mask);
    has_taken_over = sigaction(SIGINT, &ours, nullptr) == 0;
}

void end_interrupt_watch() {
    const std::lock_guard<std::mutex> lock(guard);
    if (--watchers > 0 || !has_taken_over) return;
    sigaction(SIGINT, &earlier, nullptr);
    has_taken_over = false;
}

bool is_interrupted() noexcept { return interrupted.load(std::memory_order_relaxed); }
