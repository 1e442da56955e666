#include <ngk/ngkBezCurve.h>

#include "BezierPiece.h"
#include "control_points.h"

using nmk_ngk::BezierPoints;
using nmk_ngk::BezierView;
using nmk_ngk::Jet;
using nmk_ngk::Vec;

namespace {

template <int Dimension>
typename ngkBezCurve<Dimension>::Ptr curve_of(const BezierView<Dimension>& part) {
    const auto points = nmk_ngk::points_of(part.points);
    return typename ngkBezCurve<Dimension>::Ptr(
        new ngkBezCurve<Dimension>(std::span(points), part.weights));
}

}  // namespace

template <int Dimension>
ngkBezCurve<Dimension>::ngkBezCurve(int degree) : m_degree(degree) {}

template <int Dimension>
ngkBezCurve<Dimension>::ngkBezCurve(std::span<const Point> points, std::span<const double> weights)
    : m_degree(static_cast<int>(std::min<std::size_t>(points.size(), nmk_ngk::max_points + 1)) -
               1) {
    set_points(points, weights);
}

template <int Dimension>
int ngkBezCurve<Dimension>::set_points(std::span<const Point> points,
                                       std::span<const double> weights) {
    m_points = nmk_ngk::vecs_of(points);
    m_weights.assign(weights.begin(), weights.end());
    const bool fits = m_degree >= 1 && m_degree <= ngk_max_degree &&
                      points.size() == static_cast<std::size_t>(m_degree) + 1 &&
                      (weights.empty() || weights.size() == points.size());
    this->set_valid(fits && nmk_ngk::are_points(std::span<const Vec<Dimension>>(m_points)) &&
                    nmk_ngk::are_weights(m_weights));
    return this->is_valid() ? 1 : 0;
}

template <int Dimension>
ngkRange ngkBezCurve<Dimension>::range(int /*segment*/) const noexcept {
    return {0.0, 1.0};
}

template <int Dimension>
typename ngkBezCurve<Dimension>::Ptr ngkBezCurve<Dimension>::reverse() const {
    if (!this->is_valid()) return Ptr();
    auto points = nmk_ngk::points_of(std::span<const Vec<Dimension>>(m_points));
    std::vector<double> weights = m_weights;
    std::ranges::reverse(points);
    std::ranges::reverse(weights);
    return Ptr(new ngkBezCurve(points, weights));
}

template <int Dimension>
std::pair<typename ngkBezCurve<Dimension>::Ptr, typename ngkBezCurve<Dimension>::Ptr>
ngkBezCurve<Dimension>::split(const ngkT& t) const {
    if (!this->contains(t) || t.value <= 0.0 || t.value >= 1.0) return {};
    BezierPoints<Dimension> low;
    BezierPoints<Dimension> high;
    nmk_ngk::split_bezier<Dimension>({m_points, m_weights}, t.value, low, high);
    return {curve_of(low.view()), curve_of(high.view())};
}

template <int Dimension>
Vec<Dimension> ngkBezCurve<Dimension>::point_at(const ngkT& t) const {
    return nmk_ngk::bezier_point<Dimension>({m_points, m_weights}, t.value);
}

template <int Dimension>
Jet<Dimension> ngkBezCurve<Dimension>::jet_at(const ngkT& t) const {
    return nmk_ngk::bezier_jet<Dimension>({m_points, m_weights}, t.value);
}

template <int Dimension>
void ngkBezCurve<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                          nmk_ngk::PieceOrder /*order*/) const {
    visitor.visit(nmk_ngk::BezierPiece<Dimension>({0.0, 1.0}, {m_points, m_weights}), 0);
}

template class ngkBezCurve<2>;
template class ngkBezCurve<3>;
