// holding_child.h: a child process that holds something until the test ends.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

/// Runs `hold` in a child process and returns when that is done; the child lives on until it is
/// killed.
class HoldingChild {
  public:
    explicit HoldingChild(const std::function<void()>& hold) {
        int ready[2] = {};
        EXPECT_EQ(::pipe(ready), 0);
        m_process = ::fork();
        char byte = 0;
        if (m_process == 0) {
            hold();
            const bool is_reported = ::write(ready[1], &byte, 1) == 1;
            while (is_reported) ::pause();
            ::_exit(1);
        }
        ::close(ready[1]);
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
    }
    HoldingChild(const HoldingChild&) = delete;
    HoldingChild& operator=(const HoldingChild&) = delete;
    ~HoldingChild() { kill(); }

    int process() const { return m_process; }

    /// Ends the child with SIGKILL.
    void kill() {
        if (m_process <= 0) return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

  private:
    pid_t m_process = 0;
};
