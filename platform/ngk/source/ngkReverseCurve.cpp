#include <ngk/ngkReverseCurve.h>

#include "ReversedPiece.h"

using nmk_ngk::Jet;
using nmk_ngk::Vec;

template <int Dimension>
ngkReverseCurve<Dimension>::ngkReverseCurve(const Ptr& curve)
    : m_curve(curve), m_segment_count(curve ? curve->segment_count() : 0) {
    this->set_valid(curve && curve->is_valid());
}

template <int Dimension>
ngkT ngkReverseCurve<Dimension>::turned(const ngkT& t) const noexcept {
    const int segment = segment_count() - 1 - t.segment;
    return ngkT(segment, nmk_ngk::mirrored(m_curve->range(segment), t.value));
}

template <int Dimension>
ngkRange ngkReverseCurve<Dimension>::range(int segment) const noexcept {
    return nmk_ngk::mirrored(m_curve->range(segment_count() - 1 - segment));
}

template <int Dimension>
typename ngkReverseCurve<Dimension>::Ptr ngkReverseCurve<Dimension>::reverse() const {
    return this->is_valid() ? m_curve : Ptr();
}

template <int Dimension>
std::pair<typename ngkReverseCurve<Dimension>::Ptr, typename ngkReverseCurve<Dimension>::Ptr>
ngkReverseCurve<Dimension>::split(const ngkT& t) const {
    if (!this->contains(t)) return {};
    const auto [first, second] = m_curve->split(turned(t));
    if (!first) return {};
    return {Ptr(new ngkReverseCurve(second)), Ptr(new ngkReverseCurve(first))};
}

template <int Dimension>
Vec<Dimension> ngkReverseCurve<Dimension>::point_at(const ngkT& t) const {
    return m_curve->point_at(turned(t));
}

template <int Dimension>
Jet<Dimension> ngkReverseCurve<Dimension>::jet_at(const ngkT& t) const {
    Jet<Dimension> jet = m_curve->jet_at(turned(t));
    jet.first *= -1.0;
    return jet;
}

template <int Dimension>
void ngkReverseCurve<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                              nmk_ngk::PieceOrder order) const {
    const int last = segment_count() - 1;
    const auto visit = [&](const nmk_ngk::Piece<Dimension>& piece, int segment) {
        visitor.visit(nmk_ngk::ReversedPiece<Dimension>(piece, m_curve->range(segment)),
                      last - segment);
    };
    nmk_ngk::for_each_piece<Dimension>(*m_curve, visit, nmk_ngk::opposite(order));
}

template class ngkReverseCurve<2>;
template class ngkReverseCurve<3>;
