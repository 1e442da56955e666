// time_break.h: ends a sorter of the library when its time is over.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <chrono>
#include <optional>

namespace nmk_order {

/// Requests a stop at the first step after a number of seconds; reports nothing.
class TimeBreak : public nmkProgressBreak {
  public:
    using Clock = std::chrono::steady_clock;
    using Now = Clock::time_point (*)();

    /// The seconds count from here; empty: never.
    explicit TimeBreak(std::optional<double> seconds, Now now = &Clock::now)
        : m_seconds(seconds), m_now(now), m_begin(now()) {}

    int increment() override { return is_over() ? 1 : 0; }
    int jump_to(double) override { return is_over() ? 1 : 0; }

  private:
    bool is_over() const {
        return m_seconds &&
               !(std::chrono::duration<double>(m_now() - m_begin).count() < *m_seconds);
    }

    std::optional<double> m_seconds;
    Now m_now;
    Clock::time_point m_begin;
};

}  // namespace nmk_order
