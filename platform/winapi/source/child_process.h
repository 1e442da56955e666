// child_process.h: a process that this one started, behind a handle.
//
// The kernel keeps the exit code of a child until its parent fetches it. A child whose handle is
// closed while it runs is remembered, and fetched when the next one is started.
#pragma once

#include <sys/types.h>

#include <mutex>

#include "handle_table.h"

namespace winapi {

class ChildProcess : public HandleObject {
  public:
    explicit ChildProcess(pid_t process) : m_process(process) {}
    ~ChildProcess() override;

    /// `longest` is in milliseconds.
    DWORD wait(DWORD longest) override;

    /// STILL_ACTIVE while it runs.
    DWORD exit_code();

  private:
    bool has_ended();

    const pid_t m_process;
    std::mutex m_guard;
    bool m_ended = false;
    DWORD m_exit_code = 0;
};

/// Fetches the children that were forgotten and have ended since.
void reap_forgotten_children();

}  // namespace winapi
