#include "travel_orientation.h"

#include <array>
#include <cstddef>

namespace nmk_ordering {

namespace {

/// A sum or product of two doubles and what rounding took from it.
struct ExactPair {
    double value;
    double rest;
};

// Knuth, The Art of Computer Programming, vol. 2, section 4.2.2.
ExactPair sum(double a, double b) {
    const double value = a + b;
    const double part_of_b = value - a;
    const double part_of_a = value - part_of_b;
    return {value, (a - part_of_a) + (b - part_of_b)};
}

struct Halves {
    double high;
    double low;
};

// Veltkamp's division of the 53 bits into 26 and 26 with a sign.
Halves halves(double a) {
    constexpr double splitter = 0x1p27 + 1.0;
    const double scaled = splitter * a;
    const double high = scaled - (scaled - a);
    return {high, a - high};
}

// Dekker, "A floating-point technique for extending the available precision", Numerische
// Mathematik 18, 1971.
ExactPair product(double a, double b) {
    const double value = a * b;
    const Halves of_a = halves(a);
    const Halves of_b = halves(b);
    const double first = value - of_a.high * of_b.high;
    const double second = first - of_a.low * of_b.high;
    const double third = second - of_a.high * of_b.low;
    return {value, of_a.low * of_b.low - third};
}

/// A sum of doubles of rising magnitude, none of which overlaps another.
class Expansion {
  public:
    void add_product(double a, double b) {
        const ExactPair exact = product(a, b);
        add(exact.rest);
        add(exact.value);
    }
    /// The largest double that is not 0 decides.
    int sign() const {
        for (std::size_t i = m_count; i-- > 0;) {
            if (m_parts[i] != 0.0) return m_parts[i] > 0.0 ? 1 : -1;
        }
        return 0;
    }

  private:
    void add(double b) {
        for (std::size_t i = 0; i < m_count; ++i) {
            const ExactPair exact = sum(b, m_parts[i]);
            m_parts[i] = exact.rest;
            b = exact.value;
        }
        m_parts[m_count++] = b;
    }

    std::array<double, 12> m_parts{};
    std::size_t m_count = 0;
};

}  // namespace

int exact_orientation(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    Expansion determinant;
    determinant.add_product(a.x, b.y);
    determinant.add_product(-a.y, b.x);
    determinant.add_product(b.x, c.y);
    determinant.add_product(-b.y, c.x);
    determinant.add_product(c.x, a.y);
    determinant.add_product(-c.y, a.x);
    return determinant.sign();
}

}  // namespace nmk_ordering
