// solver_samples: generated inputs for the solvers, ordinary and hostile.
//
// Seeds are fixed and written in the tests, so that a failure can be repeated.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace solver_samples {

class Generator {
  public:
    explicit Generator(std::uint32_t seed) : m_engine(seed) {}

    double between(double low, double high) {
        const double unit = static_cast<double>(m_engine()) / 4294967296.0;
        return low + (high - low) * unit;
    }

    int below(int count) {
        return static_cast<int>(m_engine() % static_cast<std::uint32_t>(count));
    }

    /// Anything that a double can hold: the special values, huge, tiny, and any bit pattern.
    double hostile() {
        static constexpr std::array<double, 20> special = {
            0.0,
            -0.0,
            1.0,
            -1.0,
            std::numeric_limits<double>::quiet_NaN(),
            std::numeric_limits<double>::infinity(),
            -std::numeric_limits<double>::infinity(),
            std::numeric_limits<double>::max(),
            -std::numeric_limits<double>::max(),
            std::numeric_limits<double>::min(),
            std::numeric_limits<double>::denorm_min(),
            -std::numeric_limits<double>::denorm_min(),
            1e-5,
            1e-10,
            -1e-200,
            1e-15,
            1e100,
            1e150,
            -1e300,
            1e-320};
        switch (below(4)) {
            case 0:
                return special[static_cast<std::size_t>(below(20))];
            case 1:
                return std::ldexp(between(-1.0, 1.0), below(2100) - 1050);
            default:
                return between(-2.0, 2.0);
        }
    }

  private:
    std::mt19937 m_engine;
};

/// Hostile calls for each solver; fewer under a sanitizer, which makes each ten times as slow.
#if defined(__SANITIZE_ADDRESS__)
constexpr int hostile_count = 50000;
#else
constexpr int hostile_count = 1000000;
#endif

/// |p(x)| beside the sum of the sizes of its terms.
inline double backward_error(const double* coefficients, int degree, double x) {
    double value = 0.0;
    double size = 0.0;
    for (int i = degree; i >= 0; --i) {
        value = value * x + coefficients[i];
        size = size * std::fabs(x) + std::fabs(coefficients[i]);
    }
    return size == 0.0 ? 0.0 : std::fabs(value) / size;
}

/// scale times the product of (x - root), ascending powers.
inline std::vector<double> polynomial_of(const std::vector<double>& roots, double scale) {
    std::vector<double> c = {scale};
    for (const double root : roots) {
        c.push_back(0.0);
        for (std::size_t i = c.size() - 1; i > 0; --i) c[i] = c[i - 1] - root * c[i];
        c[0] *= -root;
    }
    return c;
}

/// Roots in the range, each at least `gap` from the others.
inline std::vector<double> separate_roots(Generator& random, int count, double range, double gap) {
    std::vector<double> roots;
    while (static_cast<int>(roots.size()) < count) {
        const double root = random.between(-range, range);
        bool clear = true;
        for (const double other : roots) clear = clear && std::fabs(root - other) >= gap;
        if (clear) roots.push_back(root);
    }
    return roots;
}

}  // namespace solver_samples
