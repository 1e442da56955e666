#include <ngk/ngkTransformedCurve.h>

#include "Piece.h"

using nmk_ngk::Affine;
using nmk_ngk::Jet;
using nmk_ngk::Vec;

namespace {

// Coordinates and entries of the map up to this have an image within nmk_ngk::largest_coordinate.
constexpr double largest_factor = 1e49;

template <int Dimension>
bool is_usable(const Affine<Dimension>& map) {
    return map.is_usable() && map.norm() <= largest_factor;
}

}  // namespace

template <int Dimension>
ngkTransformedCurve<Dimension>::ngkTransformedCurve(const Ptr& curve, const Xform& xform)
    : m_curve(curve), m_xform(xform), m_segment_count(curve ? curve->segment_count() : 0) {
    this->set_valid(curve && curve->is_valid() && is_usable(Affine<Dimension>(xform)) &&
                    curve->extent() <= largest_factor);
}

template <int Dimension>
ngkRange ngkTransformedCurve<Dimension>::range(int segment) const noexcept {
    return m_curve->range(segment);
}

template <int Dimension>
typename ngkTransformedCurve<Dimension>::Ptr ngkTransformedCurve<Dimension>::reverse() const {
    return this->is_valid() ? Ptr(new ngkTransformedCurve(m_curve->reverse(), m_xform)) : Ptr();
}

template <int Dimension>
std::pair<typename ngkTransformedCurve<Dimension>::Ptr,
          typename ngkTransformedCurve<Dimension>::Ptr>
ngkTransformedCurve<Dimension>::split(const ngkT& t) const {
    if (!this->contains(t)) return {};
    const auto [first, second] = m_curve->split(t);
    if (!first) return {};
    return {Ptr(new ngkTransformedCurve(first, m_xform)),
            Ptr(new ngkTransformedCurve(second, m_xform))};
}

template <int Dimension>
Vec<Dimension> ngkTransformedCurve<Dimension>::point_at(const ngkT& t) const {
    return Affine<Dimension>(m_xform).point(m_curve->point_at(t));
}

template <int Dimension>
Jet<Dimension> ngkTransformedCurve<Dimension>::jet_at(const ngkT& t) const {
    return Affine<Dimension>(m_xform).jet(m_curve->jet_at(t));
}

template <int Dimension>
double ngkTransformedCurve<Dimension>::extent() const {
    // A map makes nothing longer than by its norm.
    const Affine<Dimension> map(m_xform);
    return m_curve->extent() * map.norm() + map.translation.norm();
}

template <int Dimension>
void ngkTransformedCurve<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                                  nmk_ngk::PieceOrder order) const {
    const Affine<Dimension> map(m_xform);
    const auto visit = [&](const nmk_ngk::Piece<Dimension>& piece, int segment) {
        piece.visit_image(map, segment, visitor);
    };
    nmk_ngk::for_each_piece<Dimension>(*m_curve, visit, order);
}

template class ngkTransformedCurve<2>;
template class ngkTransformedCurve<3>;
