#include "previous_handlers.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>

namespace nmk_seh {

namespace {

struct Previous {
    struct sigaction action = {};
    std::atomic<bool> is_spent = false;  // a handler that was set for one signal
};

std::array<Previous, fault_signals.size()> all_previous;

Previous& previous_of(int signal) {
    const auto* const at = std::ranges::find(fault_signals, signal);
    return all_previous[static_cast<std::size_t>(at - fault_signals.begin())];
}

bool is_sent(const siginfo_t& info) { return info.si_code <= 0; }

// The instruction is executed again when the handler returns. A signal that was sent does not come
// again, nor does a breakpoint, which is behind the thread: these are sent once more.
void do_the_default(int signal, siginfo_t* info) {
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    ::sigaction(signal, &action, nullptr);
    if (!is_sent(*info) && signal != SIGTRAP) return;
    ::syscall(SYS_rt_tgsigqueueinfo, ::getpid(), ::syscall(SYS_gettid), signal, info);
}

// The signals that the previous handler would have had blocked. What the thread had blocked itself
// comes back when our handler returns.
void block_signals_of(const struct sigaction& action, int signal) {
    sigset_t blocked = action.sa_mask;
    if ((action.sa_flags & SA_NODEFER) == 0) sigaddset(&blocked, signal);
    ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
}

void call_handler(const struct sigaction& action, int signal, siginfo_t* info, void* context) {
    block_signals_of(action, signal);
    if ((action.sa_flags & SA_SIGINFO) != 0) {
        action.sa_sigaction(signal, info, context);
    } else {
        action.sa_handler(signal);
    }
}

bool is_handler(const struct sigaction& action) {
    return (action.sa_flags & SA_SIGINFO) != 0 ||
           (action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN);
}

}  // namespace

void replace_handlers(void (*handler)(int, siginfo_t*, void*)) {
    for (const int signal : fault_signals) {
        // Asked first: a fault of another thread may need it as soon as the handler is set.
        ::sigaction(signal, nullptr, &previous_of(signal).action);
        struct sigaction action = {};
        action.sa_sigaction = handler;
        // The handler is left by an exception, so that nothing may be blocked when it begins.
        action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
        ::sigaction(signal, &action, nullptr);
    }
}

void call_previous_handler(int signal, siginfo_t* info, void* context) {
    Previous& previous = previous_of(signal);
    if (!is_handler(previous.action)) {
        // The kernel does not let a process ignore a fault of its own.
        const bool is_ignored = previous.action.sa_handler == SIG_IGN && is_sent(*info);
        if (!is_ignored) do_the_default(signal, info);
        return;
    }
    const bool is_for_one = (previous.action.sa_flags & static_cast<int>(SA_RESETHAND)) != 0;
    if (is_for_one && previous.is_spent.exchange(true)) {
        do_the_default(signal, info);
        return;
    }
    const int error_number = errno;
    call_handler(previous.action, signal, info, context);
    errno = error_number;
}

}  // namespace nmk_seh
