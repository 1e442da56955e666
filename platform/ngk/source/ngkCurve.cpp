#include <ngk/ngkCurve.h>
#include <ngk/ngkPolyline.h>

#include <cmath>
#include <limits>

using nmk_ngk::Jet;
using nmk_ngk::Vec;

template <int Dimension>
ngkCurve<Dimension>::~ngkCurve() = default;

template <int Dimension>
ngkT ngkCurve<Dimension>::t_at(double fraction) const noexcept {
    const int count = segment_count();
    if (!m_is_valid || count == 0 || !(fraction >= 0.0 && fraction <= 1.0)) return ngkT();
    const double scaled = fraction * count;
    const int segment = std::min(static_cast<int>(scaled), count - 1);
    const double part = scaled - segment;
    const auto [low, high] = range(segment);
    double value = low + (high - low) * part;
    if (part == 0.0) value = low;
    if (part == 1.0) value = high;
    return std::isfinite(value) ? ngkT(segment, std::clamp(value, low, high)) : ngkT();
}

template <int Dimension>
double ngkCurve<Dimension>::fraction_at(const ngkT& t) const noexcept {
    if (!contains(t)) return std::numeric_limits<double>::quiet_NaN();
    const auto [low, high] = range(t.segment);
    const bool is_bounded = std::isfinite(low) && std::isfinite(high);
    if (t.value == low) return t.segment / double(segment_count());
    if (t.value == high) return (t.segment + 1) / double(segment_count());
    if (!is_bounded) return std::numeric_limits<double>::quiet_NaN();
    return (t.segment + (t.value - low) / (high - low)) / segment_count();
}

template <int Dimension>
bool ngkCurve<Dimension>::contains(const ngkT& t) const noexcept {
    return m_is_valid && t.segment >= 0 && t.segment < segment_count() && std::isfinite(t.value) &&
           range(t.segment).contains(t.value);
}

template <int Dimension>
int ngkCurve<Dimension>::evaluate(double fraction, Point& point) const {
    return evaluate(t_at(fraction), point);
}

template <int Dimension>
int ngkCurve<Dimension>::evaluate(const ngkT& t, Point& point) const {
    point = contains(t) ? nmk_ngk::point_of(point_at(t)) : Point();
    return point.is_set() ? 1 : 0;
}

template <int Dimension>
int ngkCurve<Dimension>::evaluate(const ngkT& t, Point& point, Vector& first,
                                  Vector& second) const {
    point = Point();
    first = Vector();
    second = Vector();
    if (!contains(t)) return 0;
    const Jet<Dimension> jet = jet_at(t);
    point = nmk_ngk::point_of(jet.point);
    first = nmk_ngk::vector_of(jet.first);
    second = nmk_ngk::vector_of(jet.second);
    return 1;
}

namespace {

// The unit vector; zero for one of length 0.
template <int Dimension>
Vec<Dimension> unit(const Vec<Dimension>& v) {
    double largest = 0.0;
    for (const double coordinate : v.c) largest = std::max(largest, std::abs(coordinate));
    if (!(largest > 0.0) || !std::isfinite(largest)) return Vec<Dimension>{};
    // Scaled twice, so that neither small nor large ones lose their squares.
    Vec<Dimension> scaled = v;
    for (double& coordinate : scaled.c) coordinate /= largest;
    return scaled * (1.0 / scaled.norm());
}

}  // namespace

template <int Dimension>
int ngkCurve<Dimension>::tangent(const ngkT& t, Vector& direction) const {
    direction = Vector();
    if (!contains(t)) return 0;
    const Jet<Dimension> jet = jet_at(t);
    Vec<Dimension> found = unit(jet.first);
    if (found == Vec<Dimension>{}) {
        // At the end of a segment the curve comes from where the second derivative points.
        const bool arrives = t.value == range(t.segment).high;
        found = unit(jet.second) * (arrives ? -1.0 : 1.0);
    }
    direction = nmk_ngk::vector_of(found);
    return found.square() > 0.0 ? 1 : 0;
}

template <int Dimension>
double ngkCurve<Dimension>::curvature(const ngkT& t) const {
    if (!contains(t)) return std::numeric_limits<double>::quiet_NaN();
    const Jet<Dimension> jet = jet_at(t);
    const double square = jet.first.square();
    if (!(square > 0.0)) return std::numeric_limits<double>::quiet_NaN();
    const Vec<Dimension> across = jet.second - jet.first * (jet.first.dot(jet.second) / square);
    return across.norm() / square;
}

template <int Dimension>
bool ngkCurve<Dimension>::is_closed(double tolerance) const {
    Point start;
    Point end;
    return evaluate(0.0, start) != 0 && evaluate(1.0, end) != 0 &&
           start.coincident(end, tolerance) != 0;
}

template class ngkCurve<2>;
template class ngkCurve<3>;
