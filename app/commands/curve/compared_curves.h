// compared_curves.h: whether two curves are the same, and where they differ.
#pragma once

#include <geometry/giPoint3.h>
#include <ngk/ngkCurve.h>

#include <string_view>

namespace nmk_curve {

enum class Difference { none, start, end, course };

/// "start", "end", "course"; empty for none.
std::string_view difference_key(Difference difference);

struct CurveComparison {
    Difference difference = Difference::none;
    double length_of_a = 0.0, length_of_b = 0.0;  // of the polygons, in mm
    double at_length = 0.0;  // mm along the first curve, where they first differ
    giPoint3 on_a, on_b;     // there; unset where nothing differs
    double distance = 0.0;   // between the two, in mm
    double allowed = 0.0;    // mm
    double greatest = 0.0;   // distance of all samples, in mm
};

/// Compares the ends, then points at equal parts of the length: the result is that of
/// nmkNgkCurveCompare. Both curves have ends.
CurveComparison compare_curves(const ngkCurvePtr3& a, const ngkCurvePtr3& b, double tolerance);

}  // namespace nmk_curve
