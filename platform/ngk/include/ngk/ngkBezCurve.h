// ngkBezCurve3, ngkBezCurve2: a Bezier curve of degree 1 to 25, polynomial or rational. The value
// runs from 0 to 1.
#pragma once

#include <ngk/ngkCurve.h>

#include <span>
#include <vector>

#pragma GCC visibility push(default)

/// The highest degree of Bezier and NURBS curves and surfaces.
inline constexpr int ngk_max_degree = 25;

template <int Dimension>
class ngkBezCurve : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Point;
    using typename Base::Ptr;

    /// Without points, and so invalid.
    explicit ngkBezCurve(int degree);
    explicit ngkBezCurve(std::span<const Point> points, std::span<const double> weights = {});

    /// Takes degree + 1 points, and as many weights or none. Returns non-zero when the curve is
    /// valid then: the counts are right, points are usable, weights positive, from 1e-10 to 1e10,
    /// and the degree is from 1 to 25.
    int set_points(std::span<const Point> points, std::span<const double> weights = {});

    int degree() const noexcept { return m_degree; }
    bool is_rational() const noexcept { return !m_weights.empty(); }

    /// `index` from 0 to the degree of a valid curve.
    Point point(int index) const noexcept {
        return nmk_ngk::point_of(m_points[static_cast<std::size_t>(index)]);
    }

    /// 1.0 for a polynomial curve.
    double weight(int index) const noexcept {
        return is_rational() ? m_weights[static_cast<std::size_t>(index)] : 1.0;
    }

    ngkRange range(int segment) const noexcept override;
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

  private:
    int m_degree;
    std::vector<nmk_ngk::Vec<Dimension>> m_points;
    std::vector<double> m_weights;  // empty for a polynomial curve
};

extern template class ngkBezCurve<2>;
extern template class ngkBezCurve<3>;

using ngkBezCurve2 = ngkBezCurve<2>;
using ngkBezCurve3 = ngkBezCurve<3>;

#pragma GCC visibility pop
