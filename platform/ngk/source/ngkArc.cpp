#include <ngk/ngkArc.h>
#include <ngk/ngk_resource_table.h>

#include "EllipsePiece.h"

using nmk_ngk::full_turn;
using nmk_ngk::Jet;
using nmk_ngk::Vec;

namespace {

// Both angles, with the end above the start by at most one turn. Not finite where one is not, or
// where they are so large that a turn is lost in rounding.
ngkRange forwards(double start, double end) {
    double sweep = end - start;
    if (!std::isfinite(sweep)) return {start, sweep - sweep};
    if (!(sweep > 0.0 && sweep <= full_turn)) sweep -= std::floor(sweep / full_turn) * full_turn;
    return {start, start + (sweep > 0.0 ? sweep : full_turn)};
}

// Angles beyond this have lost digits of a turn.
constexpr double largest_angle = 1e6;

bool are_angles(const ngkRange& angles) {
    return std::abs(angles.low) <= largest_angle && angles.low < angles.high &&
           angles.high - angles.low <= full_turn * (1.0 + 1e-9);
}

}  // namespace

template <int Dimension>
ngkArc<Dimension>::ngkArc(const ngkCircle<Dimension>& circle, const Point& start, const Point& end)
    : ngkArc(circle, circle.angle_of(start), circle.angle_of(end)) {
    const double tolerance = ngk_resource_table_inquire().value(ngk_TOLCOINCPOINT3D);
    const bool start_is_near = this->start().coincident(start, tolerance) != 0;
    const bool end_is_near = this->end().coincident(end, tolerance) != 0;
    take_ends(start_is_near ? start : this->start(), end_is_near ? end : this->end());
}

template <int Dimension>
ngkArc<Dimension>::ngkArc(const ngkCircle<Dimension>& circle, double start_angle, double end_angle)
    : m_circle(circle), m_angles(forwards(start_angle, end_angle)) {
    this->set_valid(circle.is_valid() && are_angles(m_angles));
    if (!this->is_valid()) return;
    const nmk_ngk::Ellipse<Dimension> ellipse = {circle.centre_vec(), circle.x_radius(),
                                                 circle.y_radius()};
    m_start = ellipse.point(m_angles.low);
    // A full turn ends where it begins, to the bit.
    m_end = m_angles.high - m_angles.low == full_turn ? m_start : ellipse.point(m_angles.high);
}

template <int Dimension>
ngkArc<Dimension>::ngkArc(const ngkCircle<Dimension>& circle, const ngkRange& angles,
                          const Point& start, const Point& end)
    : m_circle(circle), m_angles(angles) {
    this->set_valid(circle.is_valid() && are_angles(angles));
    take_ends(start, end);
}

template <int Dimension>
void ngkArc<Dimension>::take_ends(const Point& start, const Point& end) {
    m_start = nmk_ngk::vec_of(start);
    m_end = nmk_ngk::vec_of(end);
    if (!m_start.is_usable() || !m_end.is_usable()) this->set_valid(false);
}

template <int Dimension>
ngkRange ngkArc<Dimension>::range(int /*segment*/) const noexcept {
    return m_angles;
}

template <int Dimension>
typename ngkArc<Dimension>::Ptr ngkArc<Dimension>::reverse() const {
    if (!this->is_valid()) return Ptr();
    return Ptr(
        new ngkArc(m_circle.reversed_circle(), {-m_angles.high, -m_angles.low}, end(), start()));
}

template <int Dimension>
std::pair<typename ngkArc<Dimension>::Ptr, typename ngkArc<Dimension>::Ptr>
ngkArc<Dimension>::split(const ngkT& t) const {
    if (!this->contains(t) || t.value <= m_angles.low || t.value >= m_angles.high) return {};
    const Point middle = nmk_ngk::point_of(point_at(t));
    return {Ptr(new ngkArc(m_circle, {m_angles.low, t.value}, start(), middle)),
            Ptr(new ngkArc(m_circle, {t.value, m_angles.high}, middle, end()))};
}

template <int Dimension>
Vec<Dimension> ngkArc<Dimension>::point_at(const ngkT& t) const {
    if (t.value == m_angles.low) return m_start;
    return t.value == m_angles.high ? m_end : m_circle.point_at(t);
}

template <int Dimension>
Jet<Dimension> ngkArc<Dimension>::jet_at(const ngkT& t) const {
    Jet<Dimension> jet = m_circle.jet_at(t);
    jet.point = point_at(t);
    return jet;
}

template <int Dimension>
void ngkArc<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                     nmk_ngk::PieceOrder /*order*/) const {
    visitor.visit(nmk_ngk::EllipsePiece<Dimension>(
                      m_angles, {m_circle.centre_vec(), m_circle.x_radius(), m_circle.y_radius()},
                      m_start, m_end, true),
                  0);
}

template class ngkArc<2>;
template class ngkArc<3>;
