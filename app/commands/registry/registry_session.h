// registry_session.h: the lock that every session on the registry holds.
#pragma once

#include <winapi/types.h>

#include <optional>
#include <string>

namespace nmk_registry {

/// Holds the mutex of nmkRegistry, so that programs that use it wait until this one is done.
class Session {
  public:
    /// Waits at most so many seconds.
    explicit Session(double seconds);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    /// Releases the mutex; what was changed is on the disk then.
    ~Session();

    /// Why the mutex is not held: one line, empty if it is held.
    const std::string& problem() const { return m_problem; }

    /// True if another session has the mutex.
    bool is_busy() const { return m_is_busy; }

  private:
    HANDLE m_mutex = nullptr;
    std::string m_problem;
    bool m_is_busy = false;
};

}  // namespace nmk_registry
