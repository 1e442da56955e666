#include <ngk/ngkPolygonizeTRP3.h>
#include <nmktoolbox/curves/nmkNgkArcLengthPositions.h>
#include <nmktoolbox/curves/nmkNgkPolylineUtils.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "curve_handle.h"
#include "polyline_walk.h"

namespace {

std::vector<double> lengths_to_points(std::span<const giPoint3> points) {
    std::vector<double> lengths;
    lengths.reserve(points.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0) sum += points[i - 1].distance(points[i]);
        lengths.push_back(sum);
    }
    return lengths;
}

// A segment that a walk to `target` from the start of the polyline passes or ends on for certain.
// Sums that differ from the target by rounding are left to the walk.
int segment_before(const std::vector<double>& lengths, double target) {
    const double rounding = 8.0 * std::numeric_limits<double>::epsilon() * lengths.back();
    const auto first_beyond = std::lower_bound(lengths.begin(), lengths.end(), target - rounding);
    const auto passed = first_beyond - lengths.begin();
    return static_cast<int>(std::max<std::ptrdiff_t>(passed - 1, 0));
}

}  // namespace

nmkNgkArcLengthPositions::nmkNgkArcLengthPositions(const ngkCurvePtr3& curve, int forward,
                                                   double tolerance)
    : m_curve(curve), m_is_forward(forward != 0) {
    if (!m_curve || !m_curve->is_valid()) return;
    const ngkCurvePtr3 measured = m_is_forward ? m_curve : m_curve->reverse();
    if (measured) measured->polygonize(ngkPolygonizeTRP3(tolerance), m_polygon, m_fractions);
    m_lengths = lengths_to_points(m_polygon.points());
}

double nmkNgkArcLengthPositions::length() const noexcept {
    return m_lengths.empty() ? 0.0 : m_lengths.back();
}

void nmkNgkArcLengthPositions::find(double distance, giPoint3& point, ngkT& parameter) const {
    point = giPoint3();
    parameter = ngkT();
    if (m_polygon.point_count() < 2) return;
    const double tolerance = nmk_curves::coincidence_in_space();
    nmk_curves::PolylineWalk walk(m_polygon.points(), tolerance);
    const int segment = segment_before(m_lengths, distance - tolerance);
    walk.start_at(segment, m_lengths[static_cast<std::size_t>(segment)]);
    const nmk_curves::PolylinePlace place = nmk_curves::place_on_segment(walk, distance);
    if (!place.is_set()) return;
    const giPoint3 on_polygon = nmk_curves::at_place(m_polygon.points(), place);
    const double fraction = nmk_curves::at_place(
        {m_fractions.array(), static_cast<std::size_t>(m_fractions.size())}, place);
    const ngkCurvePoint3 nearest = nmkNgkPolylineUtils::get_curve_point(
        m_curve, on_polygon, m_is_forward ? fraction : 1.0 - fraction);
    if (!nearest.is_set()) return;
    point = nearest.point;
    parameter = nearest.t;
}
