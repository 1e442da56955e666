#include <ngk/ngkLine.h>
#include <ngk/ngkReverseCurve.h>

#include "LinePiece.h"

using nmk_ngk::Jet;
using nmk_ngk::Vec;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

ngkRange range_of(ngkLineKind kind) {
    if (kind == ngkLineKind::bounded) return {0.0, 1.0};
    return {kind == ngkLineKind::half ? 0.0 : -infinity, infinity};
}

// Vectors shorter than this have lost digits of their squares.
constexpr double shortest_direction = 1e-100;

template <int Dimension>
Vec<Dimension> lengthened(const Vec<Dimension>& direction) {
    return direction.norm() < shortest_direction ? direction * 1e200 : direction;
}

}  // namespace

template <int Dimension>
ngkLine<Dimension>::ngkLine(const Point& start, const Point& end)
    : m_start(nmk_ngk::vec_of(start)), m_end(nmk_ngk::vec_of(end)), m_direction(m_end - m_start) {
    this->set_valid(m_start.is_usable() && m_end.is_usable());
}

template <int Dimension>
ngkLine<Dimension>::ngkLine(const Point& point, const Vector& direction, ngkLineKind kind)
    : m_kind(kind), m_range(range_of(kind)), m_start(nmk_ngk::vec_of(point)) {
    const Vec<Dimension> along = lengthened(nmk_ngk::vec_of(direction));
    const double norm = along.norm();
    const bool is_usable = m_start.is_usable() && along.is_usable() && norm > 0.0;
    // A length within rounding of 1 is kept, so that a reversed line has the same points.
    const bool is_unit = std::abs(norm - 1.0) <= 1e-15;
    if (is_usable) m_direction = is_unit ? along : along * (1.0 / norm);
    m_end = m_start + m_direction;
    this->set_valid(is_usable && m_direction.is_usable() && kind != ngkLineKind::bounded);
}

template <int Dimension>
ngkRange ngkLine<Dimension>::range(int /*segment*/) const noexcept {
    return m_range;
}

template <int Dimension>
typename ngkLine<Dimension>::Ptr ngkLine<Dimension>::reverse() const {
    if (!this->is_valid()) return Ptr();
    if (m_kind == ngkLineKind::bounded) return Ptr(new ngkLine(end(), start()));
    if (m_kind == ngkLineKind::half)
        return Ptr(new ngkReverseCurve<Dimension>(Ptr(new ngkLine(*this))));
    return Ptr(new ngkLine(start(), nmk_ngk::vector_of(m_direction * -1.0), m_kind));
}

template <int Dimension>
std::pair<typename ngkLine<Dimension>::Ptr, typename ngkLine<Dimension>::Ptr>
ngkLine<Dimension>::split(const ngkT& t) const {
    if (!this->contains(t) || t.value <= m_range.low || t.value >= m_range.high) return {};
    const Point point = nmk_ngk::point_of(point_at(t));
    const Vector back = nmk_ngk::vector_of(m_direction * -1.0);
    Ptr first(new ngkLine(start(), point));
    if (m_kind == ngkLineKind::infinite)
        first =
            Ptr(new ngkReverseCurve<Dimension>(Ptr(new ngkLine(point, back, ngkLineKind::half))));
    if (m_kind == ngkLineKind::bounded) return {first, Ptr(new ngkLine(point, end()))};
    return {first, Ptr(new ngkLine(point, direction(), ngkLineKind::half))};
}

template <int Dimension>
Vec<Dimension> ngkLine<Dimension>::point_at(const ngkT& t) const {
    return t.value == 1.0 ? m_end : m_start + m_direction * t.value;
}

template <int Dimension>
Jet<Dimension> ngkLine<Dimension>::jet_at(const ngkT& t) const {
    return {point_at(t), m_direction, Vec<Dimension>{}};
}

template <int Dimension>
void ngkLine<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                      nmk_ngk::PieceOrder /*order*/) const {
    visitor.visit(nmk_ngk::LinePiece<Dimension>(m_range, m_start, m_end, m_direction), 0);
}

template class ngkLine<2>;
template class ngkLine<3>;
