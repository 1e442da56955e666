// ngkNurbSurf: a NURBS surface, polynomial or rational, of degrees 1 to 25 along u and v.
//
// Points and weights are in rows along v: the one with the indices (i, j) along u and v is at
// i * v_count + j. Knots are as with ngkNurbCurve.
#pragma once

#include <ngk/ngkSurf.h>

#include <span>
#include <vector>

#pragma GCC visibility push(default)

/// Degree and knots along one of the two directions.
struct ngkKnots {
    int degree = 0;
    std::vector<double> knots;

    int point_count() const noexcept { return static_cast<int>(knots.size()) - degree - 1; }
};

class ngkNurbSurf : public ngkSurf {
  public:
    /// Valid when points (and weights, or none) are as many as both directions ask for, and each
    /// direction is as a valid curve's.
    ngkNurbSurf(ngkKnots u_knots, ngkKnots v_knots, std::span<const giPoint3> points,
                std::span<const double> weights = {});

    const ngkKnots& u_knots() const noexcept { return m_u; }
    const ngkKnots& v_knots() const noexcept { return m_v; }
    bool is_rational() const noexcept { return !m_weights.empty(); }
    giPoint3 point(int i, int j) const noexcept {
        return nmk_ngk::point_of(m_points[index_of(i, j)]);
    }
    double weight(int i, int j) const noexcept {
        return is_rational() ? m_weights[index_of(i, j)] : 1.0;
    }

    ngkRange u_range() const noexcept override;
    ngkRange v_range() const noexcept override;
    nmk_ngk::SurfaceJet jet_at(double u, double v) const override;
    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override;

  private:
    std::size_t index_of(int i, int j) const noexcept {
        return static_cast<std::size_t>(i) * static_cast<std::size_t>(m_v.point_count()) +
               static_cast<std::size_t>(j);
    }

    ngkKnots m_u;
    ngkKnots m_v;
    std::vector<nmk_ngk::Vec<3>> m_points;
    std::vector<double> m_weights;  // empty for a polynomial surface
};

#pragma GCC visibility pop
