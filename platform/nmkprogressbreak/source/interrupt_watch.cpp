#include "interrupt_watch.h"

#include <atomic>
#include <csignal>
#include <mutex>

namespace nmk_progressbreak {
namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "the handler may only touch lock-free data");

std::mutex guard;  // of the variables below
int watches = 0;
bool has_taken_over = false;
struct sigaction previous {};

extern "C" void record_interrupt(int) { interrupted.store(true); }

}  // namespace

void begin_interrupt_watch() {
    const std::lock_guard<std::mutex> lock(guard);
    if (watches++ > 0) return;
    interrupted.store(false);
    if (sigaction(SIGINT, nullptr, &previous) != 0 || previous.sa_handler == SIG_IGN) return;
    struct sigaction ours {};
    ours.sa_handler = record_interrupt;
    // Once only, so that a second Ctrl-C ends work that ignores the request. Interrupted reads and
    // writes are restarted.
    ours.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    sigemptyset(&ours.sa_mask);
    has_taken_over = sigaction(SIGINT, &ours, nullptr) == 0;
}

void end_interrupt_watch() {
    const std::lock_guard<std::mutex> lock(guard);
    if (--watches > 0 || !has_taken_over) return;
    sigaction(SIGINT, &previous, nullptr);
    has_taken_over = false;
}

bool is_interrupted() noexcept { return interrupted.load(std::memory_order_relaxed); }

}  // namespace nmk_progressbreak
