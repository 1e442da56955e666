// bezier_nearest: the nearest point of a Bezier curve, proved.
//
// With A the homogeneous control points seen from the query and w the weights, the squared distance
// is A.A / w^2. In Bernstein form it is nowhere below the least quotient of the coefficients. Where
// it could still be nearer, its slope has the sign of A.(A' w - A w'): with Descartes' rule of
// signs for Bernstein coefficients a part has no minimum within it, or exactly one, or is halved.
// Source of the rule: Farouki and Rajan, Algorithms for polynomials in Bernstein form, CAGD 5,
// 1988.
#pragma once

#include "BezierPiece.h"

namespace nmk_ngk {

template <int Dimension>
class BezierSearch {
  public:
    using V = Vec<Dimension>;

    BezierSearch(const BezierPiece<Dimension>& piece, const BezierView<Dimension>& curve,
                 Nearest<Dimension>& nearest, int segment) noexcept
        : m_piece(piece), m_curve(curve), m_nearest(nearest), m_segment(segment) {}

    void run() {
        consider(0.0);
        consider(1.0);
        if (is_far()) return;
        Part whole;
        const int count = m_curve.degree() + 1;
        for (int i = 0; i < count; ++i) {
            const std::size_t at = static_cast<std::size_t>(i);
            whole.weights[at] = m_curve.is_rational() ? m_curve.weight(i) : 1.0;
            whole.points[at] = (m_curve.point(i) - m_nearest.query()) * whole.weights[at];
        }
        m_nearest.parts_left().begin_piece();
        search(whole, max_depth);
    }

  private:
    // What rounding can add to a coefficient of the squared distance, as a part of the largest, for
    // each degree: a part that could be nearer by less is left out.
    static constexpr double rounding_part = 1e-15;
    static constexpr int max_depth = 52;
    static constexpr int max_steps = 100;

    struct Part {
        double low = 0.0;
        double high = 1.0;
        std::array<V, max_points> points;  // homogeneous, seen from the query
        std::array<double, max_points> weights;
    };

    enum class Slope { monotone, one_minimum, unknown };

    void consider(double part) {
        m_nearest.consider(bezier_point(m_curve, part), m_segment, m_piece.value_at(part));
    }

    /// Whether the box of the control points is further away than the nearest point so far.
    bool is_far() const {
        V low = m_curve.points.front();
        V high = low;
        for (const V& point : m_curve.points) {
            for (int i = 0; i < Dimension; ++i) {
                low[i] = std::min(low[i], point[i]);
                high[i] = std::max(high[i], point[i]);
            }
        }
        V away;
        for (int i = 0; i < Dimension; ++i) {
            const double x = m_nearest.query()[i];
            away[i] = std::max({low[i] - x, x - high[i], 0.0});
        }
        return away.square() >= m_nearest.square();
    }

    /// The least value that the squared distance can have in a part, less rounding.
    double least_square(const Part& part) const {
        const int n = m_curve.degree();
        double least = std::numeric_limits<double>::infinity();
        double most = 0.0;
        for (int k = 0; k <= 2 * n; ++k) {
            double square = 0.0;
            double weight = 0.0;
            for (int i = std::max(0, k - n), j = k - i; i <= j; ++i, --j) {
                const std::size_t a = static_cast<std::size_t>(i);
                const std::size_t b = static_cast<std::size_t>(j);
                const double factor = product_of_binomials(n, i, j) * (i == j ? 1.0 : 2.0);
                square += factor * part.points[a].dot(part.points[b]);
                weight += factor * part.weights[a] * part.weights[b];
            }
            least = std::min(least, square / weight);
            most = std::max(most, std::abs(square / weight));
        }
        return least - rounding_part * n * most;
    }

    static double product_of_binomials(int n, int i, int j) {
        const auto& row = binomials[static_cast<std::size_t>(n)];
        return row[static_cast<std::size_t>(i)] * row[static_cast<std::size_t>(j)];
    }

    Slope slope_of(const Part& part) const;

    void search(const Part& part, int depth) {
        if (!(least_square(part) < m_nearest.square())) return;
        const Slope slope = slope_of(part);
        if (slope == Slope::monotone) return;
        if (slope == Slope::one_minimum) return find_minimum(part.low, part.high);
        const double middle = part.low + (part.high - part.low) / 2.0;
        consider(middle);
        if (depth > 0 && m_nearest.parts_left().take()) search_halves(part, middle, depth - 1);
    }

    void search_halves(const Part& part, double middle, int depth) {
        Part low;
        Part high;
        const int count = m_curve.degree() + 1;
        low.low = part.low;
        low.high = high.low = middle;
        high.high = part.high;
        subdivide(part.points.data(), count, 0.5, low.points.data(), high.points.data());
        subdivide(part.weights.data(), count, 0.5, low.weights.data(), high.weights.data());
        const V& start = part.points[0];
        const V& end = part.points[static_cast<std::size_t>(count) - 1];
        const bool low_first = start.square() <= end.square();
        search(low_first ? low : high, depth);
        search(low_first ? high : low, depth);
    }

    /// Newton steps for where the slope is 0, and halving where they leave the bracket.
    void find_minimum(double low, double high) {
        double u = low + (high - low) / 2.0;
        for (int i = 0; i < max_steps && low < high; ++i) {
            const Jet<Dimension> jet = bezier_jet(m_curve, u);
            const V from_query = jet.point - m_nearest.query();
            const double slope = from_query.dot(jet.first);
            if (slope == 0.0) break;
            (slope < 0.0 ? low : high) = u;
            const double newton = u - slope / (jet.first.square() + from_query.dot(jet.second));
            const double next = newton > low && newton < high ? newton : low + (high - low) / 2.0;
            if (std::abs(next - u) <= 1e-16 || next == u) break;
            u = next;
        }
        consider(u);
    }

    const BezierPiece<Dimension>& m_piece;
    const BezierView<Dimension>& m_curve;
    Nearest<Dimension>& m_nearest;
    int m_segment;
};

/// The coefficients of A.A' of a polynomial, or A.(A' w - A w') of a rational curve, are followed
/// for changes of sign.
template <int Dimension>
typename BezierSearch<Dimension>::Slope BezierSearch<Dimension>::slope_of(const Part& part) const {
    const int n = m_curve.degree();
    // The coefficients of A' w - A w', or of A' alone; without common factors, which do not matter.
    std::array<V, 2 * max_points> turned{};
    const int turned_degree = m_curve.is_rational() ? 2 * n - 1 : n - 1;
    for (int i = 0; i < n; ++i) {
        const std::size_t a = static_cast<std::size_t>(i);
        const double factor = binomials[static_cast<std::size_t>(n) - 1][a];
        const V difference = (part.points[a + 1] - part.points[a]) * factor;
        if (!m_curve.is_rational()) {
            turned[a] = difference;
            continue;
        }
        const double weight_difference = (part.weights[a + 1] - part.weights[a]) * factor;
        for (int j = 0; j <= n; ++j) {
            const std::size_t b = static_cast<std::size_t>(j);
            const double other = binomials[static_cast<std::size_t>(n)][b];
            turned[a + b] +=
                (difference * part.weights[b] - part.points[b] * weight_difference) * other;
        }
    }
    double last = 0.0;
    int rises = 0;
    int falls = 0;
    for (int k = 0; k <= turned_degree + n; ++k) {
        double value = 0.0;
        for (int i = std::max(0, k - turned_degree); i <= std::min(k, n); ++i) {
            const double factor =
                binomials[static_cast<std::size_t>(n)][static_cast<std::size_t>(i)];
            value += factor * part.points[static_cast<std::size_t>(i)].dot(
                                  turned[static_cast<std::size_t>(k - i)]);
        }
        if (value == 0.0) continue;
        rises += last < 0.0 && value > 0.0 ? 1 : 0;
        falls += last > 0.0 && value < 0.0 ? 1 : 0;
        last = value;
    }
    if (rises == 0 && falls <= 1) return Slope::monotone;
    return rises == 1 && falls == 0 ? Slope::one_minimum : Slope::unknown;
}

}  // namespace nmk_ngk
