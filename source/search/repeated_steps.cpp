#include "search/repeated_steps.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace nmk_search {

namespace {

constexpr int fraction_digits = std::numeric_limits<double>::digits - 1;
constexpr int least_exponent = std::numeric_limits<double>::min_exponent - 1;

/// The doubles around a value that have the same distance from one to the next: those between two
/// powers of two, or all below the first normal one. Inside, they are counted in that distance.
class EvenRange {
  public:
    explicit EvenRange(double value)
        : m_exponent(std::max(std::ilogb(value), least_exponent)),
          m_end(std::int64_t{1} << (fraction_digits + 1)),
          m_begin(m_exponent == least_exponent ? -m_end : m_end / 2) {
        if (m_begin > 0 && value < 0.0) {
            m_begin = -m_end;
            m_end /= -2;
        }
    }

    bool contains(double value) const {
        const double count = scaled(value);
        return count > static_cast<double>(m_begin) && count < static_cast<double>(m_end);
    }

    std::int64_t count_of(double value) const { return static_cast<std::int64_t>(scaled(value)); }
    double value_of(std::int64_t count) const {
        return std::ldexp(static_cast<double>(count), m_exponent - fraction_digits);
    }

    /// The last count before `limit`, or before the end of the range.
    std::int64_t last_before(double limit) const {
        const double count = std::ceil(scaled(limit));
        return count < static_cast<double>(m_end) ? static_cast<std::int64_t>(count) - 1
                                                  : m_end - 1;
    }
    std::int64_t first() const { return m_begin + 1; }

  private:
    double scaled(double value) const { return std::ldexp(value, fraction_digits - m_exponent); }

    int m_exponent;
    std::int64_t m_end;    // not in the range, and neither is m_begin: next to it, doubles may
    std::int64_t m_begin;  // be nearer to each other
};

/// Where x is after as many steps as stay below the limit and round like the next two; x itself
/// when these differ. A sum half way between two doubles goes to the even one, and after one such
/// step every further one rounds the same way.
double skip_even_steps(double x, double step, double limit) {
    const EvenRange range(x);
    const double next = x + step;
    const double second = next + step;
    if (!range.contains(x) || !range.contains(next) || !range.contains(second)) return x;
    const std::int64_t at = range.count_of(x);
    const std::int64_t rounded_step = range.count_of(next) - at;
    if (range.count_of(second) - range.count_of(next) != rounded_step) return x;
    const std::int64_t room = rounded_step > 0 ? range.last_before(limit) - at : at - range.first();
    const std::int64_t steps = std::max<std::int64_t>(room, 0) / std::abs(rounded_step);
    return range.value_of(at + steps * rounded_step);
}

}  // namespace

double step_until(double x, double step, double limit) {
    while (x < limit && x + step != x) {
        if (std::isfinite(x)) x = skip_even_steps(x, step, limit);
        x += step;
    }
    return x;
}

}  // namespace nmk_search
