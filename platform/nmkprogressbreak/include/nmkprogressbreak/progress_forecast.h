// progress_forecast.h: how long work will still take, from its progress in the last seconds.
#pragma once

#include <deque>
#include <optional>

#pragma GCC visibility push(default)

namespace nmk_progressbreak {

/// The time left of one stage of work. Work that speeds up or slows down has no forecast until its
/// rate is steady: the rate of the whole stage would be off by any factor.
class ProgressForecast {
  public:
    /// Notes that the part `fraction` (0 to 1) was done `seconds` after the beginning.
    void add(double seconds, double fraction);

    /// The seconds left; empty while too little is known: in the first two seconds, while the rates
    /// of the two halves of the last five seconds differ by more than a third, when nothing moves,
    /// and when all is done.
    std::optional<double> seconds_left() const;

    /// Forgets everything, for the next stage.
    void clear() { m_samples.clear(); }

  private:
    struct Sample {
        double seconds;
        double fraction;
    };

    /// Fractions a second from one sample to another.
    static double rate(const Sample& from, const Sample& to);

    std::deque<Sample> m_samples;  // of the last seconds, the oldest first
};

}  // namespace nmk_progressbreak

#pragma GCC visibility pop
