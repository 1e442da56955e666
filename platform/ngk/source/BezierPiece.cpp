#include "BezierPiece.h"

#include "bezier_nearest.h"
#include "nearest_by_bounds.h"

namespace nmk_ngk {

namespace {

/// Bounds of a polynomial or rational curve's derivatives over its whole range, by those of its
/// control points.
struct Derivatives {
    double speed;
    double bend;
};

/// The largest of `count` lengths.
template <class LengthAt>
double longest(int count, const LengthAt& length_at) {
    double most = 0.0;
    for (int i = 0; i < count; ++i) most = std::max(most, length_at(i));
    return most;
}

template <int Dimension>
Derivatives polynomial_bounds(const BezierView<Dimension>& curve) {
    const int degree = curve.degree();
    const double speed =
        longest(degree, [&](int i) { return (curve.point(i + 1) - curve.point(i)).norm(); });
    const double bend = longest(degree - 1, [&](int i) {
        return (curve.point(i + 2) - curve.point(i + 1) * 2.0 + curve.point(i)).norm();
    });
    return {degree * speed, degree * (degree - 1.0) * bend};
}

/// With A / w for the curve seen from its middle control point: (A / w)' = (A' - (A / w) w') / w,
/// and (A / w)'' = (A'' - 2 (A / w)' w' - (A / w) w'') / w.
template <int Dimension>
Derivatives rational_bounds(const BezierView<Dimension>& curve) {
    const int n = curve.degree();
    const Vec<Dimension> centre = curve.point(n / 2);
    const auto a = [&](int i) { return (curve.point(i) - centre) * curve.weight(i); };
    const auto w = [&](int i) { return curve.weight(i); };
    const double size = longest(n + 1, [&](int i) { return (curve.point(i) - centre).norm(); });
    const double least_w = *std::ranges::min_element(curve.weights);
    const double a1 = n * longest(n, [&](int i) { return (a(i + 1) - a(i)).norm(); });
    const double w1 = n * longest(n, [&](int i) { return std::abs(w(i + 1) - w(i)); });
    const double second = n * (n - 1.0);
    const double a2 =
        second * longest(n - 1, [&](int i) { return (a(i + 2) - a(i + 1) * 2.0 + a(i)).norm(); });
    const double w2 =
        second * longest(n - 1, [&](int i) { return std::abs(w(i + 2) - w(i + 1) * 2.0 + w(i)); });
    const double speed = (a1 + size * w1) / least_w;
    return {speed, (a2 + 2.0 * speed * w1 + size * w2) / least_w};
}

template <int Dimension>
Derivatives bounds_of(const BezierView<Dimension>& curve) {
    return curve.is_rational() ? rational_bounds(curve) : polynomial_bounds(curve);
}

}  // namespace

template <int Dimension>
Jet<Dimension> BezierPiece<Dimension>::jet(double value) const {
    Jet<Dimension> jet = bezier_jet(m_curve, part_at(value));
    jet.first *= per_value();
    jet.second *= per_value() * per_value();
    return jet;
}

template <int Dimension>
typename BezierPiece<Dimension>::V BezierPiece<Dimension>::velocity(double value) const {
    if (m_curve.is_rational()) return jet(value).first;
    return bernstein_slope(m_curve.degree(), part_at(value),
                           [&](int i) { return m_curve.point(i); }) *
           per_value();
}

template <int Dimension>
BezierPoints<Dimension> BezierPiece<Dimension>::between_values(double from, double to) const {
    BezierPoints<Dimension> part;
    BezierPoints<Dimension> other;
    const double high = part_at(to);
    const double low = high > 0.0 ? part_at(from) / high : 0.0;
    split_bezier(m_curve, high, part, other);
    split_bezier(part.view(), std::min(low, 1.0), other, part);
    return part;
}

template <int Dimension>
double BezierPiece<Dimension>::speed(double from, double to) const {
    if (!(from < to)) return jet(from).first.norm();
    return bounds_of(between_values(from, to).view()).speed / (to - from);
}

template <int Dimension>
double BezierPiece<Dimension>::bend(double from, double to) const {
    if (!(from < to)) return jet(from).second.norm();
    return bounds_of(between_values(from, to).view()).bend / (to - from) / (to - from);
}

template <int Dimension>
double BezierPiece<Dimension>::sagitta(double from, double to) const {
    const BezierPoints<Dimension> part = between_values(from, to);
    const BezierView<Dimension> curve = part.view();
    // The chord's distance from the points is that from their hull, in which the curve is.
    return longest(curve.degree(), [&](int i) {
        return distance_to_chord(curve.point(i), curve.points.front(), curve.points.back());
    });
}

template <int Dimension>
typename BezierPiece<Dimension>::V BezierPiece<Dimension>::reach(double from, double to) const {
    const BezierPoints<Dimension> part = between_values(from, to);
    const BezierView<Dimension> curve = part.view();
    V reach{};
    for (int axis = 0; axis < Dimension; ++axis) {
        const double start = curve.points.front()[axis];
        const double end = curve.points.back()[axis];
        for (const V& point : curve.points)
            reach[axis] = std::max({reach[axis], point[axis] - std::max(start, end),
                                    std::min(start, end) - point[axis]});
    }
    return reach;
}

template <int Dimension>
void BezierPiece<Dimension>::find_nearest(Nearest<Dimension>& nearest, int segment) const {
    BezierSearch<Dimension>(*this, m_curve, nearest, segment).run();
}

template <int Dimension>
void BezierPiece<Dimension>::visit_image(const Affine<Dimension>& map, int segment,
                                         PieceVisitor<Dimension>& visitor) const {
    BezierPoints<Dimension> image;
    image.count = static_cast<int>(m_curve.points.size());
    image.is_rational = m_curve.is_rational();
    std::ranges::transform(m_curve.points, image.points.begin(),
                           [&](const V& point) { return map.point(point); });
    std::ranges::copy(m_curve.weights, image.weights.begin());
    visitor.visit(BezierPiece(this->range(), image.view()), segment);
}

template class BezierPiece<2>;
template class BezierPiece<3>;

}  // namespace nmk_ngk
