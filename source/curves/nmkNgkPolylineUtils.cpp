#include <ngk/ngkPolygonizeTRP3.h>
#include <nmktoolbox/curves/nmkNgkArcLengthPositions.h>
#include <nmktoolbox/curves/nmkNgkPolylineUtils.h>

#include <algorithm>

#include "curve_handle.h"
#include "polyline_walk.h"

using nmk_curves::at_place;
using nmk_curves::coincidence_in_space;
using nmk_curves::PolylinePlace;

namespace {

bool is_usable(const ngkCurvePtr3& curve) { return curve && curve->is_valid(); }

giUnitVec3 direction_of_segment(const ngkPolyline3& polyline, int segment) {
    return giUnitVec3::direction_of(polyline.point(segment + 1) - polyline.point(segment));
}

// Overwrites an array with up to so many elements, page by page; what it had is gone then. Its
// pages are used again.
template <class T>
class PageWriter {
  public:
    PageWriter(coPageArr<T>& array, int count) : m_array(array), m_count(count) {}
    PageWriter(const PageWriter&) = delete;
    PageWriter& operator=(const PageWriter&) = delete;
    ~PageWriter() { m_array.clear(m_end_of_page - m_left); }

    void add(const T& element) {
        if (m_left == 0) begin_page();
        *m_next++ = element;
        --m_left;
    }

  private:
    void begin_page() {
        m_left = std::min(m_array.page_size(), m_count - m_end_of_page);
        // Asking for an element past the mark makes it and those before it.
        m_array[m_end_of_page + m_left - 1];
        m_next = &m_array[m_end_of_page];
        m_end_of_page += m_left;
    }

    coPageArr<T>& m_array;
    int m_count;
    int m_end_of_page = 0;
    int m_left = 0;  // elements of the page that are not written yet
    T* m_next = nullptr;
};

}  // namespace

void nmkNgkPolylineUtils::evaluate_polyline(const ngkPolyline3& polyline, double distance,
                                            giPoint3& point, giUnitVec3& tangent) {
    PolylinePlace place;
    if (polyline.point_count() > 1) {
        nmk_curves::PolylineWalk walk(polyline.points(), coincidence_in_space());
        place = nmk_curves::place_on_segment(walk, distance);
    }
    if (place.is_set()) {
        point = at_place(polyline.points(), place);
        tangent = direction_of_segment(polyline, place.segment);
    } else {
        // Deliberate: only x, which is all that marks a point or direction as unset.
        point.x = gi_unset_low;
        tangent.x = gi_unset_low;
    }
}

void nmkNgkPolylineUtils::evaluate_equally_spaced_points(const ngkPolyline3& polyline,
                                                         const doublecoDynArr& parameters,
                                                         int count, giPoint3coPageArr& points,
                                                         doublecoPageArr& out_parameters) {
    const int point_count = polyline.point_count();
    if (count <= 1 || point_count == 0) {
        points.clear();
        out_parameters.clear();
        return;
    }
    const bool has_parameters = parameters.size() == point_count;
    const bool can_be_unset = !polyline.is_valid();
    const std::span<const double> values(parameters.array(),
                                         static_cast<std::size_t>(parameters.size()));
    const nmk_curves::SegmentLengths segments(polyline.points());
    nmk_curves::EquallySpacedPlaces places(polyline.points(), segments.total, count,
                                           coincidence_in_space(), segments.lengths());
    PageWriter to_points(points, count);
    PageWriter to_parameters(out_parameters, count);
    for (int i = 0; i < count; ++i) {
        const PolylinePlace place = places.next();
        if (!place.is_set()) return;
        const giPoint3 point = at_place(polyline.points(), place);
        const bool is_end = i == 0 || i == count - 1;
        if (can_be_unset && !is_end && !point.is_set()) return;
        to_points.add(point);
        if (has_parameters) to_parameters.add(at_place(values, place));
    }
}

void nmkNgkPolylineUtils::evaluate_equally_spaced_points(const ngkPolyline3& polyline, int count,
                                                         giPoint3coPageArr& points,
                                                         doublecoPageArr& out_parameters) {
    evaluate_equally_spaced_points(polyline, doublecoDynArr(), count, points, out_parameters);
}

void nmkNgkPolylineUtils::evaluate_equally_spaced_points(ngkCurvePtr3 curve, int count,
                                                         double tolerance,
                                                         giPoint3coPageArr& points,
                                                         doublecoPageArr& out_parameters) {
    ngkPolyline3 polygon;
    doublecoDynArr parameters;
    if (is_usable(curve)) curve->polygonize(ngkPolygonizeTRP3(tolerance), polygon, parameters);
    evaluate_equally_spaced_points(polygon, parameters, count, points, out_parameters);
}

double nmkNgkPolylineUtils::polyline_length_to_index(const ngkPolyline3& polyline, int index) {
    if (index <= 0 || index >= polyline.point_count()) return 0.0;
    return nmk_curves::length_to(polyline.points(), static_cast<std::size_t>(index));
}

double nmkNgkPolylineUtils::get_arc_length(const ngkCurvePtr3& curve, double tolerance) {
    if (!is_usable(curve)) return 0.0;
    const ngkPolyline3 polygon = curve->curve_polygon(ngkPolygonizeTRP3(tolerance));
    if (!polygon.is_valid()) return 0.0;
    return polyline_length_to_index(polygon, polygon.point_count() - 1);
}

void nmkNgkPolylineUtils::get_arc_length_position(const ngkCurvePtr3& curve, int forward,
                                                  double distance, double tolerance,
                                                  giPoint3& point, ngkT& parameter) {
    nmkNgkArcLengthPositions(curve, forward, tolerance).find(distance, point, parameter);
}

ngkCurvePoint3 nmkNgkPolylineUtils::get_curve_point(const ngkCurvePtr3& curve,
                                                    const giPoint3& point,
                                                    double expected_fraction) {
    return curve->closest_point(point, curve->t_at(expected_fraction));
}
