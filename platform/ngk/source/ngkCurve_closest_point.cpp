// The nearest point of a curve: that of its pieces, all of which are measured against the best of
// the others.
#include <ngk/ngkCurve.h>

#include "Piece.h"

using nmk_ngk::Nearest;
using nmk_ngk::Vec;

namespace {

constexpr int newton_steps = 12;

// What rounding can do to the distance of a point that is on the curve, as a part of its
// coordinates.
constexpr double rounding_part = 1e-15;

/// Newton steps from a parameter, which do not leave its segment.
template <int Dimension>
void search_near(const ngkCurve<Dimension>& curve, ngkT t, Nearest<Dimension>& found) {
    const auto [low, high] = curve.range(t.segment);
    for (int i = 0; i < newton_steps; ++i) {
        const nmk_ngk::Jet<Dimension> jet = curve.jet_at(t);
        found.consider(jet.point, t.segment, t.value);
        const Vec<Dimension> from_query = jet.point - found.query();
        const double slope = jet.first.square() + from_query.dot(jet.second);
        if (!(slope > 0.0)) return;
        const double next = std::clamp(t.value - from_query.dot(jet.first) / slope, low, high);
        if (!(next != t.value)) return;
        t.value = next;
    }
}

template <int Dimension>
void search_all(const ngkCurve<Dimension>& curve, Nearest<Dimension>& found) {
    using nmk_ngk::Piece;
    // Starts first: a near one spares the search in most pieces.
    nmk_ngk::for_each_piece<Dimension>(curve, [&](const Piece<Dimension>& piece, int segment) {
        const double low = piece.range().low;
        if (std::isfinite(low)) found.consider(piece.point(low), segment, low);
    });
    nmk_ngk::for_each_piece<Dimension>(curve, [&](const Piece<Dimension>& piece, int segment) {
        piece.find_nearest(found, segment);
    });
}

template <int Dimension>
bool is_on_curve(const Nearest<Dimension>& found) {
    return found.square() <= found.query().square() * (rounding_part * rounding_part);
}

template <int Dimension>
ngkCurvePoint<Dimension> point_of(const Nearest<Dimension>& found) {
    ngkCurvePoint<Dimension> nearest;
    if (!found.t().is_set()) return nearest;
    nearest.point = nmk_ngk::point_of(found.point());
    nearest.t = found.t();
    nearest.distance = nmk_ngk::point_of(found.query()).distance(nearest.point);
    return nearest;
}

}  // namespace

template <int Dimension>
ngkCurvePoint<Dimension> ngkCurve<Dimension>::closest_point(const Point& point,
                                                            const ngkT& expected) const {
    const Vec<Dimension> query = nmk_ngk::vec_of(point);
    if (!m_is_valid || !query.is_usable() || segment_count() == 0) return {};
    Nearest<Dimension> found(query);
    if (contains(expected)) search_near(*this, expected, found);
    if (!is_on_curve(found)) search_all(*this, found);
    return point_of(found);
}

template <int Dimension>
ngkCurvePoint<Dimension> ngkCurve<Dimension>::closest_point(const Point& point) const {
    return closest_point(point, ngkT());
}

template <int Dimension>
int ngkCurve<Dimension>::closest_point(const Point& point,
                                       ngkCurvePoint<Dimension>& nearest) const {
    nearest = closest_point(point);
    return nearest.is_set() ? 1 : 0;
}

template int ngkCurve<2>::closest_point(const Point&, ngkCurvePoint<2>&) const;
template int ngkCurve<3>::closest_point(const Point&, ngkCurvePoint<3>&) const;
template ngkCurvePoint<2> ngkCurve<2>::closest_point(const Point&) const;
template ngkCurvePoint<3> ngkCurve<3>::closest_point(const Point&) const;
template ngkCurvePoint<2> ngkCurve<2>::closest_point(const Point&, const ngkT&) const;
template ngkCurvePoint<3> ngkCurve<3>::closest_point(const Point&, const ngkT&) const;
