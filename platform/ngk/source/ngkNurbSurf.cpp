#include <ngk/ngkNurbSurf.h>

#include <limits>

#include "basis_functions.h"
#include "control_points.h"
#include "surface_bounds.h"

using nmk_ngk::BasisFunctions;
using nmk_ngk::SurfaceBounds;
using nmk_ngk::SurfaceJet;
using nmk_ngk::Vec;

namespace {

std::size_t points_of(const ngkKnots& knots) {
    return static_cast<std::size_t>(std::max(knots.point_count(), 0));
}

// A weighted sum of points with all its derivatives, and of the weights alone.
struct WeightedSums {
    SurfaceJet points{};
    double weight = 0.0;
    double u = 0.0, v = 0.0;
    double uu = 0.0, uv = 0.0, vv = 0.0;
};

// The quotient rule, seen from the point itself, so that what cancels is small.
SurfaceJet divide(const WeightedSums& sums, const Vec<3>& point) {
    const double factor = 1.0 / sums.weight;
    const Vec<3> u = sums.points.u * factor;
    const Vec<3> v = sums.points.v * factor;
    return {point,
            u,
            v,
            (sums.points.uu - u * (2.0 * sums.u)) * factor,
            (sums.points.uv - u * sums.v - v * sums.u) * factor,
            (sums.points.vv - v * (2.0 * sums.v)) * factor};
}

}  // namespace

ngkNurbSurf::ngkNurbSurf(ngkKnots u_knots, ngkKnots v_knots, std::span<const giPoint3> points,
                         std::span<const double> weights)
    : m_u(std::move(u_knots)),
      m_v(std::move(v_knots)),
      m_points(nmk_ngk::vecs_of(points)),
      m_weights(weights.begin(), weights.end()) {
    const bool fits = nmk_ngk::are_knots(m_u.degree, m_u.knots, points_of(m_u)) &&
                      nmk_ngk::are_knots(m_v.degree, m_v.knots, points_of(m_v)) &&
                      points.size() == points_of(m_u) * points_of(m_v) &&
                      (weights.empty() || weights.size() == points.size());
    set_valid(fits && nmk_ngk::are_points(std::span<const Vec<3>>(m_points)) &&
              nmk_ngk::are_weights(m_weights));
}

ngkRange ngkNurbSurf::u_range() const noexcept {
    return is_valid() ? nmk_ngk::range_of_knots(m_u.degree, m_u.knots) : ngkRange();
}

ngkRange ngkNurbSurf::v_range() const noexcept {
    return is_valid() ? nmk_ngk::range_of_knots(m_v.degree, m_v.knots) : ngkRange();
}

SurfaceJet ngkNurbSurf::jet_at(double u, double v) const {
    const auto clamped = [](const ngkRange& range, double x) {
        return std::clamp(x, range.low, range.high);
    };
    const BasisFunctions along_u =
        nmk_ngk::basis_functions(m_u.degree, m_u.knots, clamped(u_range(), u));
    const BasisFunctions along_v =
        nmk_ngk::basis_functions(m_v.degree, m_v.knots, clamped(v_range(), v));
    const auto for_each = [&](const auto& add) {
        for (std::size_t i = 0; i <= static_cast<std::size_t>(m_u.degree); ++i) {
            for (std::size_t j = 0; j <= static_cast<std::size_t>(m_v.degree); ++j) {
                const std::size_t at = index_of(static_cast<int>(along_u.first + i),
                                                static_cast<int>(along_v.first + j));
                add(i, j, at, is_rational() ? m_weights[at] : 1.0);
            }
        }
    };
    WeightedSums sums;
    for_each([&](std::size_t i, std::size_t j, std::size_t at, double weight) {
        const double share = weight * along_u.values[i] * along_v.values[j];
        sums.points.point += m_points[at] * share;
        sums.weight += share;
        sums.u += weight * along_u.slopes[i] * along_v.values[j];
        sums.v += weight * along_u.values[i] * along_v.slopes[j];
    });
    const Vec<3> point = sums.points.point * (1.0 / sums.weight);
    for_each([&](std::size_t i, std::size_t j, std::size_t at, double weight) {
        const Vec<3> relative = (m_points[at] - point) * weight;
        sums.points.u += relative * (along_u.slopes[i] * along_v.values[j]);
        sums.points.v += relative * (along_u.values[i] * along_v.slopes[j]);
        sums.points.uu += relative * (along_u.bends[i] * along_v.values[j]);
        sums.points.uv += relative * (along_u.slopes[i] * along_v.slopes[j]);
        sums.points.vv += relative * (along_u.values[i] * along_v.bends[j]);
    });
    return divide(sums, point);
}

SurfaceBounds ngkNurbSurf::bounds_over(const giBox2& rectangle) const {
    const ngkRange u = {std::max(rectangle.min().x, u_range().low),
                        std::min(rectangle.max().x, u_range().high)};
    const ngkRange v = {std::max(rectangle.min().y, v_range().low),
                        std::min(rectangle.max().y, v_range().high)};
    return nmk_ngk::ControlNet(m_u, m_v, m_points, m_weights).bounds_over(u, v);
}
