// real_roots: the real roots of a polynomial, counted and bracketed without rounding.

#include "commands/solve/real_roots.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>

#include "commands/solve/exact_polynomial.h"

namespace nmk_solve {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

/// A factor of a polynomial without multiple roots, and how often it divides the polynomial.
struct Factor {
    ExactPolynomial polynomial;
    std::size_t multiplicity = 1;
};

/// The factors that are not constant; each root of the polynomial is a root of one of them.
std::vector<Factor> square_free_factors(const ExactPolynomial& polynomial) {
    std::vector<Factor> factors;
    if (degree_of(polynomial) == 0) {
        return factors;
    }
    ExactPolynomial repeated = common_divisor(polynomial, exact_derivative(polynomial));
    ExactPolynomial rest = quotient_of(polynomial, repeated);
    for (std::size_t multiplicity = 1; degree_of(rest) > 0; ++multiplicity) {
        ExactPolynomial more = common_divisor(rest, repeated);
        ExactPolynomial factor = quotient_of(rest, more);
        repeated = quotient_of(repeated, more);
        rest = std::move(more);
        if (degree_of(factor) > 0) {
            factors.push_back({std::move(factor), multiplicity});
        }
    }
    return factors;
}

/// The Sturm sequence of a polynomial without multiple roots.
class SturmSequence {
  public:
    explicit SturmSequence(const ExactPolynomial& polynomial)
        : m_members{polynomial, exact_derivative(polynomial)} {
        while (degree_of(m_members.back()) > 0) {
            ExactPolynomial next = remainder_of(m_members[m_members.size() - 2], m_members.back());
            for (Integer& coefficient : next) {
                coefficient = -coefficient;
            }
            m_members.push_back(std::move(next));
        }
    }

    /// The sign of the polynomial itself.
    int sign(const Dyadic& x) const { return sign_at(m_members.front(), x); }

    /// The sign variations at x, which may be infinite. From one x to a greater one their number
    /// decreases by the number of roots that are greater than the first and not than the second.
    std::size_t variations(double x) const {
        std::size_t count = 0;
        int last = 0;
        for (const ExactPolynomial& member : m_members) {
            const int sign = sign_of(member, x);
            count += sign != 0 && sign == -last ? 1U : 0U;
            last = sign != 0 ? sign : last;
        }
        return count;
    }

  private:
    static int sign_of(const ExactPolynomial& member, double x) {
        if (x == infinity || x == -infinity) {
            const int at_end = member.back().sign();
            return x < 0.0 && degree_of(member) % 2 != 0 ? -at_end : at_end;
        }
        return sign_at(member, dyadic_of(x));
    }

    std::vector<ExactPolynomial> m_members;
};

/// The position of a finite double among all of them, 0 for zero.
std::int64_t rank_of(double x) {
    const auto bits = std::bit_cast<std::int64_t>(x < 0.0 ? -x : x + 0.0);
    return x < 0.0 ? -bits : bits;
}

double double_of(std::int64_t rank) {
    return rank < 0 ? -std::bit_cast<double>(-rank) : std::bit_cast<double>(rank);
}

/// Finds the brackets of the roots of one factor.
class RootBrackets {
  public:
    explicit RootBrackets(const Factor& factor)
        : m_sequence(factor.polynomial), m_multiplicity(factor.multiplicity) {}

    std::vector<CertifiedRoot> find() {
        const std::size_t below = m_sequence.variations(-infinity);
        const std::size_t first = m_sequence.variations(-largest);
        const std::size_t last = m_sequence.variations(largest);
        add(-infinity, -largest, -largest, below - first);
        search(rank_of(-largest), rank_of(largest), first, last);
        add(largest, infinity, largest, last - m_sequence.variations(infinity));
        return std::move(m_roots);
    }

  private:
    /// Halves the doubles from `low` (left out) to `high`, until no double is between both.
    void search(std::int64_t low, std::int64_t high, std::size_t at_low, std::size_t at_high) {
        if (at_low == at_high) {
            return;
        }
        if (low + 1 == high) {
            return add_between(double_of(low), double_of(high), at_low - at_high);
        }
        const std::int64_t middle = std::midpoint(low, high);
        const std::size_t at_middle = m_sequence.variations(double_of(middle));
        search(low, middle, at_low, at_middle);
        search(middle, high, at_middle, at_high);
    }

    void add_between(double low, double high, std::size_t count) {
        const int at_high = m_sequence.sign(dyadic_of(high));
        const std::size_t inside = at_high == 0 ? count - 1 : count;
        const bool is_upper =
            inside == 1 && at_high != 0 && m_sequence.sign(midpoint(low, high)) == -at_high;
        add(low, high, is_upper ? high : low, inside);
        add(high, high, high, count - inside);
    }

    void add(double low, double high, double nearest, std::size_t count) {
        m_roots.insert(m_roots.end(), count, {low, high, nearest, m_multiplicity});
    }

    SturmSequence m_sequence;
    std::size_t m_multiplicity;
    std::vector<CertifiedRoot> m_roots;
};

}  // namespace

RootCount count_real_roots(const std::vector<double>& coefficients) {
    RootCount count;
    for (const Factor& factor : square_free_factors(exact_polynomial(coefficients))) {
        const SturmSequence sequence(factor.polynomial);
        const std::size_t roots = sequence.variations(-infinity) - sequence.variations(infinity);
        count.distinct += roots;
        count.with_multiplicity += roots * factor.multiplicity;
    }
    return count;
}

std::vector<CertifiedRoot> certified_roots(const std::vector<double>& coefficients) {
    std::vector<CertifiedRoot> roots;
    for (const Factor& factor : square_free_factors(exact_polynomial(coefficients))) {
        const std::vector<CertifiedRoot> found = RootBrackets(factor).find();
        roots.insert(roots.end(), found.begin(), found.end());
    }
    std::stable_sort(roots.begin(), roots.end(),
                     [](const CertifiedRoot& a, const CertifiedRoot& b) {
                         return std::pair(a.high, a.low) < std::pair(b.high, b.low);
                     });
    return roots;
}

}  // namespace nmk_solve
