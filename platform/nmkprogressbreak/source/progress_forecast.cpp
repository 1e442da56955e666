#include <nmkprogressbreak/progress_forecast.h>

#include <algorithm>

namespace nmk_progressbreak {

namespace {

constexpr double window = 5.0;                // seconds of progress that are looked at
constexpr double min_window = 2.0;            // with fewer seconds there is no forecast
constexpr double min_steadiness = 2.0 / 3.0;  // of the slower half's rate to the faster half's

}  // namespace

void ProgressForecast::add(double seconds, double fraction) {
    m_samples.push_back({seconds, fraction});
    // One sample may be older than the window, so that the others fill it.
    while (m_samples.size() > 2 && m_samples[1].seconds <= seconds - window) {
        m_samples.pop_front();
    }
}

double ProgressForecast::rate(const Sample& from, const Sample& to) {
    const double seconds = to.seconds - from.seconds;
    return seconds > 0.0 ? (to.fraction - from.fraction) / seconds : 0.0;
}

std::optional<double> ProgressForecast::seconds_left() const {
    if (m_samples.size() < 3) return std::nullopt;
    const Sample& first = m_samples.front();
    const Sample& last = m_samples.back();
    if (last.seconds - first.seconds < min_window || last.fraction >= 1.0) return std::nullopt;
    const double halfway = (first.seconds + last.seconds) / 2.0;
    const auto middle = std::find_if(m_samples.begin(), m_samples.end(),
                                     [&](const Sample& s) { return s.seconds >= halfway; });
    const auto [slower, faster] = std::minmax({rate(first, *middle), rate(*middle, last)});
    if (!(slower > 0.0) || slower < min_steadiness * faster) return std::nullopt;
    return (1.0 - last.fraction) / rate(first, last);
}

}  // namespace nmk_progressbreak
