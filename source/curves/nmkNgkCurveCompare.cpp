#include <ngk/ngkPolygonizeTRP3.h>
#include <ngk/ngkPolyline.h>
#include <nmktoolbox/curves/nmkNgkCurveCompare.h>
#include <nmktoolbox/curves/nmkNgkPolylineUtils.h>

#include <algorithm>
#include <cmath>

#include "curve_handle.h"
#include "polyline_walk.h"

namespace {

bool has_same_end(const ngkCurve3& a, const ngkCurve3& b, double fraction, double tolerance) {
    giPoint3 on_a;
    giPoint3 on_b;
    return a.evaluate(fraction, on_a) && b.evaluate(fraction, on_b) &&
           on_a.coincident(on_b, tolerance);
}

// A curve's polygon and its length; one that cannot be used counts as 0 long.
struct Polygon {
    ngkPolyline3 polyline;
    double length;

    Polygon(const ngkCurve3& curve, double tolerance)
        : polyline(curve.curve_polygon(ngkPolygonizeTRP3(tolerance))),
          length(polyline.is_valid() ? nmkNgkPolylineUtils::polyline_length_to_index(
                                           polyline, polyline.point_count() - 1)
                                     : 0.0) {}
};

// Samples, less one, that lie a tolerance apart. A tolerance of 0 asks for infinitely many.
int samples_along(double length, double tolerance) {
    if (!(length > 0.0)) return 0;
    const double count = std::ceil(length / tolerance);
    return static_cast<int>(std::min(count, double{nmkNgkCurveCompare::max_samples}));
}

bool have_same_samples(const Polygon& a, const Polygon& b, int intervals, double tolerance) {
    if (a.polyline.point_count() == 0 || b.polyline.point_count() == 0) return false;
    const double snap = nmk_curves::coincidence_in_space();
    const auto on_a = a.polyline.points();
    const auto on_b = b.polyline.points();
    nmk_curves::EquallySpacedPlaces along_a(on_a, a.length, intervals + 1, snap);
    nmk_curves::EquallySpacedPlaces along_b(on_b, b.length, intervals + 1, snap);
    along_a.next();
    along_b.next();
    for (int i = 1; i <= intervals; ++i) {
        const auto place_on_a = along_a.next();
        const auto place_on_b = along_b.next();
        if (!place_on_a.is_set() || !place_on_b.is_set()) return false;
        const giPoint3 sample = nmk_curves::at_place(on_a, place_on_a);
        if (!sample.coincident(nmk_curves::at_place(on_b, place_on_b), tolerance)) return false;
    }
    return true;
}

}  // namespace

int nmkNgkCurveCompare::compare(const ngkCurvePtr3& a, const ngkCurvePtr3& b, double tolerance) {
    if (!a || !b || !a->is_valid() || !b->is_valid()) return 0;
    if (!has_same_end(*a, *b, 0.0, tolerance) || !has_same_end(*a, *b, 1.0, tolerance)) return 0;
    const Polygon polygon_of_a(*a, tolerance);
    const Polygon polygon_of_b(*b, tolerance);
    const int intervals = std::max(samples_along(polygon_of_a.length, tolerance),
                                   samples_along(polygon_of_b.length, tolerance));
    // Deliberate: without an interval nothing is compared but the ends, and the first sample, which
    // is an end, never again.
    if (intervals == 0) return 1;
    const bool is_same =
        have_same_samples(polygon_of_a, polygon_of_b, intervals, sample_tolerances * tolerance);
    return is_same ? 1 : 0;
}
