// progress_relay.h: a progress reporter that forwards each call and remembers a request to stop.
//
// Annealing ignores a request to stop; the command stops between two tools instead.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

namespace nmk_shell {

class ProgressRelay : public nmkProgressBreak {
  public:
    /// `reporter` is borrowed and may be null.
    explicit ProgressRelay(nmkProgressBreak* reporter) : m_reporter(reporter) {}

    /// Whether any call so far returned a request to stop.
    bool stop_requested() const { return m_stop_requested; }

    int send_progress_bar_to_0(const char* text) override {
        return m_reporter == nullptr ? 0 : m_reporter->send_progress_bar_to_0(text);
    }
    void set_range(double range) override {
        if (m_reporter != nullptr) {
            m_reporter->set_range(range);
        }
    }
    int increment() override { return m_reporter == nullptr ? 0 : noted(m_reporter->increment()); }
    int jump_to(double position) override {
        return m_reporter == nullptr ? 0 : noted(m_reporter->jump_to(position));
    }
    int send_progress_bar_to_100() override {
        return m_reporter == nullptr ? 0 : m_reporter->send_progress_bar_to_100();
    }

  private:
    int noted(int request) {
        m_stop_requested = m_stop_requested || request != 0;
        return request;
    }

    nmkProgressBreak* m_reporter;
    bool m_stop_requested = false;
};

}  // namespace nmk_shell
