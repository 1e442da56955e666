// worker_pool: a small pool of worker processes.

#include "shell/worker_pool.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <exception>
#include <vector>

namespace nmk_shell {

namespace {

constexpr int milliseconds_between_questions = 100;

// The first byte that a worker writes; without it the worker has ended too early.
constexpr char is_result = 'r';
constexpr char is_problem = 'p';

nmk_text::Error problem(std::string message) { return {{}, 0, std::move(message)}; }

nmk_text::Result<std::string> result_of(const WorkerTasks& tasks, std::size_t task) {
    try {
        return tasks.work(task);
    } catch (const std::exception& failure) {
        return problem(failure.what());
    }
}

void write_all(int descriptor, const std::string& bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t wrote = ::write(descriptor, bytes.data() + at, bytes.size() - at);
        if (wrote < 0 && errno != EINTR) {
            return;
        }
        at += wrote > 0 ? static_cast<std::size_t>(wrote) : 0;
    }
}

/// Does the task in a process that was just made for it, and ends that process.
[[noreturn]] void be_worker(const WorkerTasks& tasks, std::size_t task, int descriptor) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // no worker outlives the tool
    const nmk_text::Result<std::string> result = result_of(tasks, task);
    write_all(descriptor, result ? is_result + *result : is_problem + result.error().message);
    ::_exit(0);  // what the caller has buffered is the caller's to write
}

struct Worker {
    pid_t process;
    int descriptor;
    std::size_t task;
    std::string bytes = {};
};

class WorkerPool {
  public:
    WorkerPool(const WorkerTasks& tasks, std::size_t size) : m_tasks(tasks), m_size(size) {}
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// Ends workers that are left, when `done` has thrown.
    ~WorkerPool() {
        for (const Worker& worker : m_workers) {
            ::kill(worker.process, SIGKILL);
            end_of(worker);
        }
    }

    void run() {
        for (;;) {
            while (m_next < m_tasks.count && m_workers.size() < m_size && m_tasks.goes_on()) {
                start(m_next++);
            }
            if (m_workers.empty()) {
                return;
            }
            read_results();
            m_tasks.goes_on();
        }
    }

  private:
    /// Without a process or a pipe to spare, the task is done here.
    void start(std::size_t task) {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            m_tasks.done(task, result_of(m_tasks, task));
            return;
        }
        const pid_t process = ::fork();
        if (process == 0) {
            ::close(ends[0]);
            be_worker(m_tasks, task, ends[1]);
        }
        ::close(ends[1]);
        if (process > 0) {
            m_workers.push_back({process, ends[0], task});
            return;
        }
        ::close(ends[0]);
        m_tasks.done(task, result_of(m_tasks, task));
    }

    void read_results() {
        std::vector<pollfd> polled;
        for (const Worker& worker : m_workers) {
            polled.push_back({worker.descriptor, POLLIN, 0});
        }
        if (::poll(polled.data(), polled.size(), milliseconds_between_questions) <= 0) {
            return;
        }
        for (std::size_t i = polled.size(); i-- > 0;) {
            if (polled[i].revents != 0 && !read_some(m_workers[i])) {
                const Worker ended = std::move(m_workers[i]);
                m_workers.erase(m_workers.begin() + static_cast<std::ptrdiff_t>(i));
                m_tasks.done(ended.task, result_of_ended(ended));
            }
        }
    }

    /// False at the end of what the worker writes.
    static bool read_some(Worker& worker) {
        std::array<char, 65536> chunk{};
        const ssize_t got = ::read(worker.descriptor, chunk.data(), chunk.size());
        if (got > 0) {
            worker.bytes.append(chunk.data(), static_cast<std::size_t>(got));
        }
        return got > 0 || (got < 0 && errno == EINTR);
    }

    /// Closes the pipe and waits for the process; returns its status.
    static int end_of(const Worker& worker) {
        ::close(worker.descriptor);
        int status = 0;
        while (::waitpid(worker.process, &status, 0) < 0 && errno == EINTR) {
        }
        return status;
    }

    static nmk_text::Result<std::string> result_of_ended(const Worker& worker) {
        const int status = end_of(worker);
        if (WIFSIGNALED(status)) {
            return problem("its worker was ended by signal " + std::to_string(WTERMSIG(status)));
        }
        if (worker.bytes.empty()) {
            return problem("its worker ended without a result");
        }
        const std::string rest = worker.bytes.substr(1);
        return worker.bytes[0] == is_result ? nmk_text::Result<std::string>(rest) : problem(rest);
    }

    const WorkerTasks& m_tasks;
    std::size_t m_size;
    std::size_t m_next = 0;
    std::vector<Worker> m_workers;
};

}  // namespace

void run_in_workers(const WorkerTasks& tasks, std::size_t workers) {
    if (workers > 1) {
        WorkerPool(tasks, workers).run();
        return;
    }
    for (std::size_t task = 0; task < tasks.count && tasks.goes_on(); ++task) {
        tasks.done(task, result_of(tasks, task));
    }
}

}  // namespace nmk_shell
