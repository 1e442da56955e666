#include <exactmath/exact_sine.h>
#include <ngk/ngkElementarySurfs.h>

#include <limits>
#include <numbers>

using nmk_ngk::SurfaceBounds;
using nmk_ngk::SurfaceJet;
using nmk_ngk::Vec;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr ngkRange without_end = {-infinity, infinity};

struct Axes {
    Vec<3> origin;
    Vec<3> x;
    Vec<3> y;
    Vec<3> z;

    explicit Axes(const giWorkplane3& plane)
        : origin(nmk_ngk::vec_of(plane.origin())),
          x(nmk_ngk::vec_of(plane.x_axis().vector())),
          y(nmk_ngk::vec_of(plane.y_axis().vector())),
          z(nmk_ngk::vec_of(plane.z_axis().vector())) {}
};

bool is_usable(const giWorkplane3& plane) {
    const Axes axes(plane);
    return plane.is_set() && axes.origin.is_usable() && axes.x.is_usable() && axes.y.is_usable() &&
           axes.z.is_usable();
}

bool is_radius(double radius) { return radius > 0.0 && radius <= nmk_ngk::largest_coordinate; }

constexpr Vec<3> zero{};

}  // namespace

ngkPlaneSurf::ngkPlaneSurf(const giWorkplane3& plane) : m_plane(plane) {
    set_valid(is_usable(plane));
}

ngkRange ngkPlaneSurf::u_range() const noexcept { return without_end; }
ngkRange ngkPlaneSurf::v_range() const noexcept { return without_end; }

SurfaceJet ngkPlaneSurf::jet_at(double u, double v) const {
    const Axes axes(m_plane);
    return {axes.origin + (axes.x * u + axes.y * v), axes.x, axes.y, zero, zero, zero};
}

SurfaceBounds ngkPlaneSurf::bounds_over(const giBox2& /*rectangle*/) const {
    return {1.0, 1.0, 0.0, 0.0, 0.0};
}

ngkCylinderSurf::ngkCylinderSurf(const giWorkplane3& plane, double radius)
    : m_plane(plane), m_radius(radius) {
    set_valid(is_usable(plane) && is_radius(radius));
}

ngkRange ngkCylinderSurf::u_range() const noexcept { return without_end; }
ngkRange ngkCylinderSurf::v_range() const noexcept { return without_end; }

SurfaceJet ngkCylinderSurf::jet_at(double u, double v) const {
    const Axes axes(m_plane);
    const double x = m_radius * nmk_exact::exact_cos(u);
    const double y = m_radius * nmk_exact::exact_sin(u);
    const Vec<3> outwards = axes.x * x + axes.y * y;
    return {axes.origin + (outwards + axes.z * v),
            axes.y * x - axes.x * y,
            axes.z,
            outwards * -1.0,
            zero,
            zero};
}

SurfaceBounds ngkCylinderSurf::bounds_over(const giBox2& /*rectangle*/) const {
    return {m_radius, 1.0, m_radius, 0.0, 0.0};
}

ngkSphereSurf::ngkSphereSurf(const giWorkplane3& plane, double radius)
    : m_plane(plane), m_radius(radius) {
    set_valid(is_usable(plane) && is_radius(radius));
}

ngkRange ngkSphereSurf::u_range() const noexcept { return without_end; }
ngkRange ngkSphereSurf::v_range() const noexcept {
    return {-std::numbers::pi / 2.0, std::numbers::pi / 2.0};
}

SurfaceJet ngkSphereSurf::jet_at(double u, double v) const {
    const Axes axes(m_plane);
    const Vec<3> along = axes.x * nmk_exact::exact_cos(u) + axes.y * nmk_exact::exact_sin(u);
    const Vec<3> across = axes.y * nmk_exact::exact_cos(u) - axes.x * nmk_exact::exact_sin(u);
    const double wide = m_radius * nmk_exact::exact_cos(v);
    const double high = m_radius * nmk_exact::exact_sin(v);
    const Vec<3> outwards = along * wide + axes.z * high;
    return {axes.origin + outwards, across * wide,  axes.z * wide - along * high,
            along * -wide,          across * -high, outwards * -1.0};
}

SurfaceBounds ngkSphereSurf::bounds_over(const giBox2& /*rectangle*/) const {
    return {m_radius, m_radius, m_radius, m_radius, m_radius};
}

ngkBilinearSurf::ngkBilinearSurf(const std::array<giPoint3, 4>& corners) : m_corners(corners) {
    set_valid(std::ranges::all_of(
        corners, [](const giPoint3& corner) { return nmk_ngk::vec_of(corner).is_usable(); }));
}

ngkRange ngkBilinearSurf::u_range() const noexcept { return {0.0, 1.0}; }
ngkRange ngkBilinearSurf::v_range() const noexcept { return {0.0, 1.0}; }

SurfaceJet ngkBilinearSurf::jet_at(double u, double v) const {
    const Vec<3> a = nmk_ngk::vec_of(m_corners[0]);
    const Vec<3> b = nmk_ngk::vec_of(m_corners[1]);
    const Vec<3> c = nmk_ngk::vec_of(m_corners[2]);
    const Vec<3> d = nmk_ngk::vec_of(m_corners[3]);
    const Vec<3> low = nmk_ngk::between(a, b, u);
    const Vec<3> high = nmk_ngk::between(c, d, u);
    return {nmk_ngk::between(low, high, v),
            nmk_ngk::between(b - a, d - c, v),
            high - low,
            zero,
            (d - c) - (b - a),
            zero};
}

SurfaceBounds ngkBilinearSurf::bounds_over(const giBox2& rectangle) const {
    // Each first derivative is between two vectors, so the longest is at a corner.
    const SurfaceJet low = jet_at(rectangle.min().x, rectangle.min().y);
    const SurfaceJet high = jet_at(rectangle.max().x, rectangle.max().y);
    return {std::max(low.u.norm(), high.u.norm()), std::max(low.v.norm(), high.v.norm()), 0.0,
            low.uv.norm(), 0.0};
}
