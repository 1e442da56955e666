#include <ngk/ngkCompCurve.h>

#include <algorithm>
#include <limits>

#include "Piece.h"

using nmk_ngk::Jet;
using nmk_ngk::Vec;

template <int Dimension>
int ngkCompCurve<Dimension>::add_segment_end(const Ptr& curve) {
    if (!curve || !curve->is_valid()) return 0;
    typename Base::Point start;
    typename Base::Point end;
    if (curve->evaluate(0.0, start) == 0 || curve->evaluate(1.0, end) == 0) return 0;
    const bool joins = m_curves.empty() ||
                       (this->evaluate(1.0, end) != 0 && start.coincident(end, m_tolerance) != 0);
    const int added = curve->segment_count();
    if (!joins || added > std::numeric_limits<int>::max() - segment_count()) return 0;
    m_curves.push_back(curve);
    m_first_segments.push_back(segment_count() + added);
    this->set_valid(true);
    return 1;
}

template <int Dimension>
int ngkCompCurve<Dimension>::segment_count() const noexcept {
    return m_first_segments.back();
}

template <int Dimension>
std::size_t ngkCompCurve<Dimension>::curve_with(int segment) const noexcept {
    const auto next = std::ranges::upper_bound(m_first_segments, segment);
    return static_cast<std::size_t>(next - m_first_segments.begin()) - 1;
}

template <int Dimension>
ngkT ngkCompCurve<Dimension>::within(const ngkT& t, std::size_t curve) const noexcept {
    return ngkT(t.segment - m_first_segments[curve], t.value);
}

template <int Dimension>
ngkRange ngkCompCurve<Dimension>::range(int segment) const noexcept {
    const std::size_t index = curve_with(segment);
    return m_curves[index]->range(segment - m_first_segments[index]);
}

template <int Dimension>
typename ngkCompCurve<Dimension>::Ptr ngkCompCurve<Dimension>::reverse() const {
    if (!this->is_valid()) return Ptr();
    auto turned = std::make_shared<ngkCompCurve>(m_tolerance);
    std::for_each(m_curves.rbegin(), m_curves.rend(),
                  [&](const Ptr& curve) { turned->add_segment_end(curve->reverse()); });
    return Ptr(std::shared_ptr<const Base>(turned));
}

template <int Dimension>
std::pair<typename ngkCompCurve<Dimension>::Ptr, typename ngkCompCurve<Dimension>::Ptr>
ngkCompCurve<Dimension>::split(const ngkT& t) const {
    const double fraction = this->fraction_at(t);
    if (!(fraction > 0.0 && fraction < 1.0)) return {};
    const std::size_t index = curve_with(t.segment);
    const double inside = m_curves[index]->fraction_at(within(t, index));
    auto first = std::make_shared<ngkCompCurve>(m_tolerance);
    auto second = std::make_shared<ngkCompCurve>(m_tolerance);
    for (std::size_t i = 0; i < index; ++i) first->add_segment_end(m_curves[i]);
    const auto [low, high] = m_curves[index]->split(within(t, index));
    if (low) first->add_segment_end(low);
    if (!low) (inside == 0.0 ? second : first)->add_segment_end(m_curves[index]);
    if (high) second->add_segment_end(high);
    for (std::size_t i = index + 1; i < m_curves.size(); ++i) second->add_segment_end(m_curves[i]);
    return {Ptr(std::shared_ptr<const Base>(first)), Ptr(std::shared_ptr<const Base>(second))};
}

template <int Dimension>
Vec<Dimension> ngkCompCurve<Dimension>::point_at(const ngkT& t) const {
    const std::size_t index = curve_with(t.segment);
    return m_curves[index]->point_at(within(t, index));
}

template <int Dimension>
Jet<Dimension> ngkCompCurve<Dimension>::jet_at(const ngkT& t) const {
    const std::size_t index = curve_with(t.segment);
    return m_curves[index]->jet_at(within(t, index));
}

template <int Dimension>
double ngkCompCurve<Dimension>::extent() const {
    double most = 0.0;
    for (const Ptr& curve : m_curves) most = std::max(most, curve->extent());
    return most;
}

template <int Dimension>
void ngkCompCurve<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                           nmk_ngk::PieceOrder order) const {
    const std::size_t count = m_curves.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t index = order == nmk_ngk::PieceOrder::forwards ? i : count - 1 - i;
        const auto visit = [&](const nmk_ngk::Piece<Dimension>& piece, int segment) {
            visitor.visit(piece, m_first_segments[index] + segment);
        };
        nmk_ngk::for_each_piece<Dimension>(*m_curves[index], visit, order);
    }
}

template class ngkCompCurve<2>;
template class ngkCompCurve<3>;
