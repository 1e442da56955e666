// travel_budget.h: how much is still to be done, for all cells of a search together.
//
// The clock is read once in many steps only, and never when no limit of time is set.
#pragma once

#include <apsl/apHighResTime.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkTravelProblem.h>

#include <cstdint>
#include <optional>

namespace nmk_ordering {

class TravelBudget {
  public:
    using Clock = double (*)();  // seconds

    TravelBudget(std::int64_t steps, std::optional<double> seconds, nmkProgressBreak* progress,
                 Clock clock = &apHighResTime::time)
        : m_steps(steps),
          m_seconds(seconds),
          m_clock(clock),
          m_began(clock()),
          m_progress(progress) {
        if (m_progress == nullptr) return;
        stop_if(m_progress->send_progress_bar_to_0("Travel %3d%%"));
        m_progress->set_range(static_cast<double>(steps));
    }

    std::int64_t steps() const { return m_steps; }
    std::int64_t made() const { return m_made; }
    bool is_over() const { return m_stop_reason != nmkTravelStopReason::finished; }
    nmkTravelStopReason stop_reason() const { return m_stop_reason; }

    /// One step was made.
    void step() {
        ++m_made;
        if (m_made % steps_between_looks == 0) look();
    }
    /// Some work that is not a step was done.
    void work() {
        if (++m_work % work_between_looks == 0) look();
    }
    /// A way around keep-outs was searched, which takes as long as many steps without.
    void search() {
        if (++m_searches % searches_between_looks == 0) look();
    }
    /// Reads the clock, and reports the progress.
    void look() {
        if (is_over()) return;
        if (m_progress != nullptr) stop_if(m_progress->jump_to(static_cast<double>(m_made)));
        if (!m_seconds || is_over()) return;
        if (!(m_clock() - m_began < *m_seconds)) {
            m_stop_reason = nmkTravelStopReason::time_limit;
        }
    }
    void finish() {
        if (m_progress != nullptr) stop_if(m_progress->send_progress_bar_to_100());
    }

  private:
    static constexpr std::int64_t steps_between_looks = 64;
    static constexpr std::int64_t work_between_looks = 1024;
    static constexpr std::int64_t searches_between_looks = 16;

    void stop_if(int requested) {
        if (requested != 0 && !is_over()) m_stop_reason = nmkTravelStopReason::stopped;
    }

    std::int64_t m_steps;
    std::int64_t m_made = 0;
    std::int64_t m_work = 0;
    std::int64_t m_searches = 0;
    std::optional<double> m_seconds;
    Clock m_clock;
    double m_began;
    nmkProgressBreak* m_progress;
    nmkTravelStopReason m_stop_reason = nmkTravelStopReason::finished;
};

}  // namespace nmk_ordering
