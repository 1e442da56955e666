#include <ngk/ngkArc.h>
#include <ngk/ngkCircle.h>

#include "EllipsePiece.h"

using nmk_ngk::full_turn;
using nmk_ngk::Jet;
using nmk_ngk::Vec;

namespace {

// How far from 1 the length of an axis may be, and from 0 the cosine between both. No unit.
constexpr double error_of_axes = 1e-6;

// How far axes times the radius that are given may be from those of the plane, as a part of the
// radius: a circle that is reversed makes its axes perpendicular, which may take both errors above.
constexpr double error_of_radii = 4e-6;

template <int Dimension>
bool are_axes(const Vec<Dimension>& x, const Vec<Dimension>& y) {
    return std::abs(x.norm() - 1.0) <= error_of_axes && std::abs(y.norm() - 1.0) <= error_of_axes &&
           std::abs(x.dot(y)) <= error_of_axes;
}

Vec<2> x_of(const ngkAxes2& plane) { return nmk_ngk::vec_of(plane.x); }
Vec<2> y_of(const ngkAxes2& plane) { return nmk_ngk::vec_of(plane.y); }
Vec<2> origin_of(const ngkAxes2& plane) { return nmk_ngk::vec_of(plane.origin); }
Vec<3> x_of(const giWorkplane3& plane) { return nmk_ngk::vec_of(plane.x_axis().vector()); }
Vec<3> y_of(const giWorkplane3& plane) { return nmk_ngk::vec_of(plane.y_axis().vector()); }
Vec<3> origin_of(const giWorkplane3& plane) { return nmk_ngk::vec_of(plane.origin()); }

ngkAxes2 turned_over(const ngkAxes2& plane) {
    return {plane.origin, plane.x, giVector2(-plane.y.x, -plane.y.y)};
}
giWorkplane3 turned_over(const giWorkplane3& plane) {
    return {plane.origin(), -plane.y_axis(), -plane.z_axis()};
}

// In space, where nobody calls it, the plane stays unset: clang 14 instantiates constrained members
// of a class that is instantiated explicitly.
template <int Dimension>
typename ngkSpace<Dimension>::Plane axes_about(const giPoint2& centre) {
    typename ngkSpace<Dimension>::Plane axes;
    if constexpr (Dimension == 2) axes.origin = centre;
    return axes;
}

}  // namespace

template <int Dimension>
ngkCircle<Dimension>::ngkCircle(const Plane& plane, double radius)
    : m_plane(plane),
      m_radius(radius),
      m_centre(origin_of(plane)),
      m_x(x_of(plane)),
      m_y(y_of(plane)) {
    this->set_valid(m_centre.is_usable() && are_axes(m_x, m_y) && radius >= 0.0 &&
                    m_centre.norm() + radius <= nmk_ngk::largest_coordinate);
    m_x *= radius;
    m_y *= radius;
}

template <int Dimension>
ngkCircle<Dimension>::ngkCircle(const giPoint2& centre, double radius) requires(Dimension == 2)
    : ngkCircle(axes_about<Dimension>(centre), radius) {}

template <int Dimension>
ngkCircle<Dimension>::ngkCircle(const Plane& plane, double radius,
                                const nmk_ngk::Vec<Dimension>& x_radius,
                                const nmk_ngk::Vec<Dimension>& y_radius)
    : ngkCircle(plane, radius) {
    const double error = (x_radius - m_x).norm() + (y_radius - m_y).norm();
    this->set_valid(this->is_valid() && error <= error_of_radii * radius);
    m_x = x_radius;
    m_y = y_radius;
}

template <int Dimension>
double ngkCircle<Dimension>::angle_of(const Point& point) const {
    const Vec<Dimension> from_centre = nmk_ngk::vec_of(point) - m_centre;
    const double angle =
        nmk_exact::exact_atan2(from_centre.dot(y_of(m_plane)), from_centre.dot(x_of(m_plane)));
    if (!(angle < 0.0)) return angle;
    return angle + full_turn < full_turn ? angle + full_turn : 0.0;
}

template <int Dimension>
ngkRange ngkCircle<Dimension>::range(int /*segment*/) const noexcept {
    return {0.0, full_turn};
}

template <int Dimension>
ngkCircle<Dimension> ngkCircle<Dimension>::reversed_circle() const {
    ngkCircle reversed(turned_over(m_plane), m_radius);
    // The same start to the bit, which an axis that is computed anew would not give.
    reversed.m_x = m_x;
    reversed.m_y = m_y * -1.0;
    return reversed;
}

template <int Dimension>
typename ngkCircle<Dimension>::Ptr ngkCircle<Dimension>::reverse() const {
    return this->is_valid() ? Ptr(new ngkCircle(reversed_circle())) : Ptr();
}

template <int Dimension>
std::pair<typename ngkCircle<Dimension>::Ptr, typename ngkCircle<Dimension>::Ptr>
ngkCircle<Dimension>::split(const ngkT& t) const {
    return ngkArc<Dimension>(*this, 0.0, full_turn).split(t);
}

template <int Dimension>
Vec<Dimension> ngkCircle<Dimension>::point_at(const ngkT& t) const {
    if (t.value == full_turn) return m_centre + m_x;
    return nmk_ngk::Ellipse<Dimension>{m_centre, m_x, m_y}.point(t.value);
}

template <int Dimension>
Jet<Dimension> ngkCircle<Dimension>::jet_at(const ngkT& t) const {
    Jet<Dimension> jet = nmk_ngk::Ellipse<Dimension>{m_centre, m_x, m_y}.jet(t.value);
    jet.point = point_at(t);
    return jet;
}

template <int Dimension>
void ngkCircle<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                        nmk_ngk::PieceOrder /*order*/) const {
    const Vec<Dimension> start = m_centre + m_x;
    visitor.visit(
        nmk_ngk::EllipsePiece<Dimension>(range(0), {m_centre, m_x, m_y}, start, start, true), 0);
}

template class ngkCircle<2>;
template class ngkCircle<3>;
