#include "child_process.h"

#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <winapi/processes.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <vector>

#include "failure.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Between two looks at a child on a kernel that does not report its end.
constexpr milliseconds between_looks{5};
// Longest single sleep; a wait without end is made of many.
constexpr milliseconds longest_sleep{60000};

struct Forgotten {
    std::mutex guard;
    std::vector<pid_t> children;
};

Forgotten& forgotten() {
    static auto* const the_forgotten = new Forgotten;
    return *the_forgotten;
}

// Whether the child has ended, and its status, which is lost in a host that ignores SIGCHLD.
bool fetch(pid_t process, int& status) {
    const pid_t fetched = ::waitpid(process, &status, WNOHANG);
    return fetched == process || (fetched < 0 && errno == ECHILD);
}

// A descriptor that can be read once the process has ended; -1 on a kernel without them.
int open_for_waiting(pid_t process) {
    const bool refused = winapi::injected_fault("pidfd_open", "") != 0;
    return refused ? -1 : static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

void sleep_until_it_may_have_ended(int descriptor, milliseconds longest) {
    pollfd waited_for = {descriptor, POLLIN, 0};
    const milliseconds time = std::min(longest, descriptor < 0 ? between_looks : longest_sleep);
    ::poll(&waited_for, descriptor < 0 ? 0 : 1, static_cast<int>(std::max(time.count(), 1L)));
}

}  // namespace

namespace winapi {

ChildProcess::~ChildProcess() {
    if (!has_ended()) {
        const std::lock_guard lock(forgotten().guard);
        forgotten().children.push_back(m_process);
    }
}

bool ChildProcess::has_ended() {
    const std::lock_guard lock(m_guard);
    int status = 0;
    if (!m_ended && fetch(m_process, status)) {
        m_ended = true;
        m_exit_code =
            static_cast<DWORD>(WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status));
    }
    return m_ended;
}

DWORD ChildProcess::exit_code() {
    if (!has_ended()) {
        return STILL_ACTIVE;
    }
    const std::lock_guard lock(m_guard);
    return m_exit_code;
}

DWORD ChildProcess::wait(DWORD longest) {
    const auto end = Clock::now() + milliseconds(longest);
    if (has_ended()) {
        return WAIT_OBJECT_0;
    }
    const int descriptor = open_for_waiting(m_process);
    bool ended = has_ended();
    while (!ended) {
        const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
        if (longest != INFINITE && left.count() <= 0) {
            break;
        }
        sleep_until_it_may_have_ended(descriptor, longest == INFINITE ? longest_sleep : left);
        ended = has_ended();
    }
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return ended ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

void reap_forgotten_children() {
    const std::lock_guard lock(forgotten().guard);
    std::erase_if(forgotten().children, [](pid_t process) {
        int status = 0;
        return fetch(process, status);
    });
}

}  // namespace winapi
