// progress_relay.h: a progress reporter that hands everything on and remembers a wish to stop.
//
// Annealing does not listen to a break; between two tools the tool itself can, if the wish was
// remembered.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

namespace nmk_shell {

class ProgressRelay : public nmkProgressBreak {
  public:
    /// `reporter` is borrowed and may be null.
    explicit ProgressRelay(nmkProgressBreak* reporter) : m_reporter(reporter) {}

    /// Whether any step so far was answered with a wish to stop.
    bool asked() const { return m_asked; }

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
    int noted(int answer) {
        m_asked = m_asked || answer != 0;
        return answer;
    }

    nmkProgressBreak* m_reporter;
    bool m_asked = false;
};

}  // namespace nmk_shell
