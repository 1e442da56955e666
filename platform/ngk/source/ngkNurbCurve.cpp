#include <ngk/ngkNurbCurve.h>

#include "BezierPiece.h"
#include "blossom.h"
#include "control_points.h"
#include "knots.h"

using nmk_ngk::Jet;
using nmk_ngk::Vec;

template <int Dimension>
ngkNurbCurve<Dimension>::ngkNurbCurve(int degree, std::span<const double> knots,
                                      std::span<const Point> points,
                                      std::span<const double> weights)
    : m_degree(degree),
      m_knots(knots.begin(), knots.end()),
      m_points(nmk_ngk::vecs_of(points)),
      m_weights(weights.begin(), weights.end()) {
    check();
    if (this->is_valid()) make_spans();
}

template <int Dimension>
void ngkNurbCurve<Dimension>::check() {
    const bool weights_fit = m_weights.empty() || m_weights.size() == m_points.size();
    this->set_valid(weights_fit && nmk_ngk::are_knots(m_degree, m_knots, m_points.size()) &&
                    nmk_ngk::are_points(std::span<const Vec<Dimension>>(m_points)) &&
                    nmk_ngk::are_weights(m_weights));
}

template <int Dimension>
void ngkNurbCurve<Dimension>::make_spans() {
    std::vector<Vec<Dimension>> weighted = m_points;
    for (std::size_t i = 0; i < m_weights.size(); ++i) weighted[i] *= m_weights[i];
    const std::span<const Vec<Dimension>> points(weighted);
    const std::span<const double> weights(m_weights);
    const auto [low, high] = nmk_ngk::range_of_knots(m_degree, m_knots);
    m_breaks.push_back(low);
    for (std::size_t i = static_cast<std::size_t>(m_degree); m_knots[i] < high; ++i) {
        if (m_knots[i] == m_knots[i + 1]) continue;
        m_breaks.push_back(m_knots[i + 1]);
        for (int ups = 0; ups <= m_degree; ++ups) {
            Vec<Dimension> point = nmk_ngk::blossom(m_degree, m_knots, points, i, ups);
            if (is_rational()) {
                m_span_weights.push_back(nmk_ngk::blossom(m_degree, m_knots, weights, i, ups));
                point *= 1.0 / m_span_weights.back();
            }
            // Neighbours share a point to the bit.
            const bool is_shared = ups == 0 && !m_span_points.empty();
            m_span_points.push_back(is_shared ? m_span_points.back() : point);
        }
    }
    keep_ends();
}

template <int Dimension>
void ngkNurbCurve<Dimension>::keep_ends() {
    // Where the ends are control points they are kept to the bit.
    const std::size_t p = static_cast<std::size_t>(m_degree);
    const std::size_t first = nmk_ngk::interval_at(m_degree, m_knots, m_breaks.front());
    const std::size_t last = nmk_ngk::interval_at(m_degree, m_knots, m_breaks.back());
    if (m_knots[first + 1 - p] == m_knots[first]) m_span_points.front() = m_points[first - p];
    if (m_knots[last + 1] == m_knots[last + p]) m_span_points.back() = m_points[last];
}

template <int Dimension>
std::size_t ngkNurbCurve<Dimension>::span_at(double value) const noexcept {
    const auto inner = std::span(m_breaks).subspan(1, m_breaks.size() - 2);
    return static_cast<std::size_t>(std::ranges::upper_bound(inner, value) - inner.begin());
}

template <int Dimension>
std::span<const Vec<Dimension>> ngkNurbCurve<Dimension>::span_points(
    std::size_t span) const noexcept {
    const std::size_t count = static_cast<std::size_t>(m_degree) + 1;
    return std::span(m_span_points).subspan(span * count, count);
}

template <int Dimension>
std::span<const double> ngkNurbCurve<Dimension>::span_weights(std::size_t span) const noexcept {
    if (!is_rational()) return {};
    const std::size_t count = static_cast<std::size_t>(m_degree) + 1;
    return std::span(m_span_weights).subspan(span * count, count);
}

template <int Dimension>
coPrf<const ngkNurbCurve<Dimension>> ngkNurbCurve<Dimension>::insert_knot(double knot) const {
    if (!this->is_valid() || !(knot > m_breaks.front() && knot < m_breaks.back())) return {};
    const std::size_t p = static_cast<std::size_t>(m_degree);
    const std::size_t interval = nmk_ngk::interval_at(m_degree, m_knots, knot);
    if (m_knots[interval + 1 - p] == knot) return {};
    std::vector<Point> points;
    std::vector<double> weights;
    for (std::size_t i = 0; i <= m_points.size(); ++i) {
        const bool is_before = i + p <= interval;
        const bool is_after = i > interval;
        const double part = is_before  ? 1.0
                            : is_after ? 0.0
                                       : (knot - m_knots[i]) / (m_knots[i + p] - m_knots[i]);
        const std::size_t here = std::min(i, m_points.size() - 1);
        const std::size_t last = i > 0 ? i - 1 : 0;
        if (!is_rational()) {
            points.push_back(
                nmk_ngk::point_of(nmk_ngk::between(m_points[last], m_points[here], part)));
            continue;
        }
        const double here_share = m_weights[here] * part;
        const double last_share = m_weights[last] * (1.0 - part);
        weights.push_back(here_share + last_share);
        points.push_back(nmk_ngk::point_of(nmk_ngk::between(
            m_points[last], m_points[here], part == 1.0 ? 1.0 : here_share / weights.back())));
    }
    std::vector<double> knots = m_knots;
    knots.insert(knots.begin() + static_cast<std::ptrdiff_t>(interval) + 1, knot);
    return coPrf<const ngkNurbCurve>(new ngkNurbCurve(m_degree, knots, points, weights));
}

template <int Dimension>
std::vector<coPrf<const ngkBezCurve<Dimension>>> ngkNurbCurve<Dimension>::bezier_curves() const {
    std::vector<coPrf<const ngkBezCurve<Dimension>>> curves;
    for (std::size_t i = 0; i + 1 < m_breaks.size(); ++i) {
        const auto points = nmk_ngk::points_of(span_points(i));
        curves.emplace_back(new ngkBezCurve<Dimension>(std::span(points), span_weights(i)));
    }
    return curves;
}

template <int Dimension>
ngkRange ngkNurbCurve<Dimension>::range(int /*segment*/) const noexcept {
    if (!this->is_valid()) return {};
    return {m_breaks.front(), m_breaks.back()};
}

template <int Dimension>
typename ngkNurbCurve<Dimension>::Ptr ngkNurbCurve<Dimension>::reverse() const {
    if (!this->is_valid()) return Ptr();
    std::vector<double> knots(m_knots.rbegin(), m_knots.rend());
    const auto [low, high] = range(0);
    for (double& knot : knots) {
        if (knot == low || knot == high) {
            knot = knot == low ? high : low;
        } else {
            knot = low + (high - knot);
        }
    }
    auto points = nmk_ngk::points_of(std::span<const Vec<Dimension>>(m_points));
    std::vector<double> weights(m_weights.rbegin(), m_weights.rend());
    std::ranges::reverse(points);
    return Ptr(new ngkNurbCurve(m_degree, knots, points, weights));
}

template <int Dimension>
std::pair<typename ngkNurbCurve<Dimension>::Ptr, typename ngkNurbCurve<Dimension>::Ptr>
ngkNurbCurve<Dimension>::split(const ngkT& t) const {
    if (!this->contains(t) || t.value <= m_breaks.front() || t.value >= m_breaks.back()) return {};
    coPrf<const ngkNurbCurve> full(new ngkNurbCurve(*this));
    while (const auto next = full->insert_knot(t.value)) full = next;
    // The knot is there `degree` times now, from the index `first` on, and the point before it is
    // on the curve.
    const std::vector<double>& knots = full->m_knots;
    const std::ptrdiff_t first = std::ranges::lower_bound(knots, t.value) - knots.begin();
    const std::ptrdiff_t p = m_degree;
    const auto points = nmk_ngk::points_of(std::span<const Vec<Dimension>>(full->m_points));
    const std::span<const Point> all(points);
    const std::span<const double> weights(full->m_weights);
    const std::size_t shared = static_cast<std::size_t>(first) - 1;
    std::vector<double> low(knots.begin(), knots.begin() + first + p);
    low.push_back(t.value);
    std::vector<double> high(knots.begin() + first, knots.end());
    high.insert(high.begin(), t.value);
    const bool rational = is_rational();
    return {Ptr(new ngkNurbCurve(m_degree, low, all.first(shared + 1),
                                 rational ? weights.first(shared + 1) : weights)),
            Ptr(new ngkNurbCurve(m_degree, high, all.subspan(shared),
                                 rational ? weights.subspan(shared) : weights))};
}

template <int Dimension>
Vec<Dimension> ngkNurbCurve<Dimension>::point_at(const ngkT& t) const {
    const std::size_t span = span_at(t.value);
    const nmk_ngk::BezierPiece<Dimension> piece({m_breaks[span], m_breaks[span + 1]},
                                                {span_points(span), span_weights(span)});
    return piece.point(t.value);
}

template <int Dimension>
Jet<Dimension> ngkNurbCurve<Dimension>::jet_at(const ngkT& t) const {
    const std::size_t span = span_at(t.value);
    const nmk_ngk::BezierPiece<Dimension> piece({m_breaks[span], m_breaks[span + 1]},
                                                {span_points(span), span_weights(span)});
    return piece.jet(t.value);
}

template <int Dimension>
void ngkNurbCurve<Dimension>::visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                                           nmk_ngk::PieceOrder order) const {
    const std::size_t count = m_breaks.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t span = order == nmk_ngk::PieceOrder::forwards ? i : count - 1 - i;
        visitor.visit(nmk_ngk::BezierPiece<Dimension>({m_breaks[span], m_breaks[span + 1]},
                                                      {span_points(span), span_weights(span)}),
                      0);
    }
}

template class ngkNurbCurve<2>;
template class ngkNurbCurve<3>;
