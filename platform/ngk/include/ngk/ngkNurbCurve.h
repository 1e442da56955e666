// ngkNurbCurve3, ngkNurbCurve2: a NURBS curve of degree 1 to 25, polynomial or rational.
//
// Points P0 to Pn and knots k0 to k(n + degree + 1), which never descend. The curve is the part
// between the knots with the indices `degree` and n + 1, whose values its parameter takes; clamped
// ends are not needed.
#pragma once

#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCurve.h>

#include <span>
#include <vector>

#pragma GCC visibility push(default)

template <int Dimension>
class ngkNurbCurve : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Point;
    using typename Base::Ptr;

    /// Valid when the degree is from 1 to 25, there are more points than that, points and knots are
    /// usable, the knots are as many as points + degree + 1 and never descend, no inner knot is
    /// there more than `degree` times, the range is not empty, and weights are as with Bezier
    /// curves.
    ngkNurbCurve(int degree, std::span<const double> knots, std::span<const Point> points,
                 std::span<const double> weights = {});

    int degree() const noexcept { return m_degree; }
    int point_count() const noexcept { return static_cast<int>(m_points.size()); }
    int knot_count() const noexcept { return static_cast<int>(m_knots.size()); }
    bool is_rational() const noexcept { return !m_weights.empty(); }
    Point point(int index) const noexcept {
        return nmk_ngk::point_of(m_points[static_cast<std::size_t>(index)]);
    }
    double knot(int index) const noexcept { return m_knots[static_cast<std::size_t>(index)]; }
    double weight(int index) const noexcept {
        return is_rational() ? m_weights[static_cast<std::size_t>(index)] : 1.0;
    }

    /// The same curve with one more knot, strictly within the range; an empty handle where it is
    /// not, or where the knot is there `degree` times already.
    /// Method: Boehm; Piegl and Tiller, The NURBS Book, 2nd ed., section 5.2.
    coPrf<const ngkNurbCurve> insert_knot(double knot) const;

    /// The curve as Bezier curves, one for each knot interval that is not empty.
    std::vector<coPrf<const ngkBezCurve<Dimension>>> bezier_curves() const;

    ngkRange range(int segment) const noexcept override;
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

  private:
    void check();
    void make_spans();
    void keep_ends();
    std::size_t span_at(double value) const noexcept;
    std::span<const nmk_ngk::Vec<Dimension>> span_points(std::size_t span) const noexcept;
    std::span<const double> span_weights(std::size_t span) const noexcept;

    int m_degree;
    std::vector<double> m_knots;
    std::vector<nmk_ngk::Vec<Dimension>> m_points;
    std::vector<double> m_weights;  // empty for a polynomial curve
    std::vector<double> m_breaks;   // ends of the knot intervals that are not empty
    std::vector<nmk_ngk::Vec<Dimension>> m_span_points;  // degree + 1 of each interval
    std::vector<double> m_span_weights;
};

extern template class ngkNurbCurve<2>;
extern template class ngkNurbCurve<3>;

using ngkNurbCurve2 = ngkNurbCurve<2>;
using ngkNurbCurve3 = ngkNurbCurve<3>;

#pragma GCC visibility pop
