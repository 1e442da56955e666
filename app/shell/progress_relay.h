// progress_relay.h: a progress reporter that forwards each call and remembers a request to stop.
//
// Annealing ignores a request to stop; the command stops between two tools instead.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <functional>
#include <optional>
#include <utility>

namespace nmk_shell {

class ProgressRelay : public nmkProgressBreak {
  public:
    /// `reporter` is borrowed and may be null. `on_stop` is called once, at the first request to
    /// stop, when the bar of the reporter has been erased; it may be empty.
    explicit ProgressRelay(nmkProgressBreak* reporter, std::function<void()> on_stop = {})
        : m_reporter(reporter), m_on_stop(std::move(on_stop)) {}

    /// Whether any call so far returned a request to stop.
    bool stop_requested() const { return m_stop_requested; }

    /// The range of the following stages, in place of that of the work; empty: that of the work.
    void set_expected_range(std::optional<double> range) { m_expected_range = range; }

    int send_progress_bar_to_0(const char* text) override {
        return m_reporter == nullptr ? 0 : noted(m_reporter->send_progress_bar_to_0(text));
    }
    void set_range(double range) override {
        if (m_reporter != nullptr) {
            m_reporter->set_range(m_expected_range.value_or(range));
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
        if (request != 0 && !std::exchange(m_stop_requested, true) && m_on_stop) {
            m_reporter->send_progress_bar_to_100();
            m_on_stop();
        }
        return request;
    }

    nmkProgressBreak* m_reporter;
    std::function<void()> m_on_stop;
    std::optional<double> m_expected_range;
    bool m_stop_requested = false;
};

}  // namespace nmk_shell
