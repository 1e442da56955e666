// compared_curves: whether two curves are the same, and where they differ.

#include "commands/curve/compared_curves.h"

#include <nmktoolbox/curves/nmkNgkCurveCompare.h>
#include <nmktoolbox/curves/nmkNgkPolylineUtils.h>

#include <algorithm>
#include <cmath>

namespace nmk_curve {

namespace {

using Utils = nmkNgkPolylineUtils;

// The place of a difference is searched among so many samples at most.
constexpr double most_samples = 200000.0;

giPoint3coPageArr samples_of(const ngkCurvePtr3& curve, int count, double tolerance) {
    giPoint3coPageArr points;
    doublecoPageArr fractions;
    Utils::evaluate_equally_spaced_points(curve, count, tolerance, points, fractions);
    return points;
}

bool has_other_end(const ngkCurve3& a, const ngkCurve3& b, double fraction,
                   CurveComparison& comparison) {
    a.evaluate(fraction, comparison.on_a);
    b.evaluate(fraction, comparison.on_b);
    comparison.distance = comparison.on_a.distance(comparison.on_b);
    return !(comparison.distance <= comparison.allowed);
}

/// Keeps the first pair of samples that are too far apart, or the furthest where none is.
void take_samples(CurveComparison& comparison, const giPoint3coPageArr& of_a,
                  const giPoint3coPageArr& of_b) {
    const int count = std::min(of_a.size(), of_b.size());
    bool is_found = false;
    for (int i = 1; i < count; ++i) {
        const double distance = of_a[i].distance(of_b[i]);
        const bool is_new = distance > comparison.greatest;
        comparison.greatest = std::max(comparison.greatest, distance);
        if (is_found || !(is_new || distance > comparison.allowed)) continue;
        is_found = distance > comparison.allowed;
        comparison.on_a = of_a[i];
        comparison.on_b = of_b[i];
        comparison.distance = distance;
        comparison.at_length = comparison.length_of_a * i / (count - 1);
    }
}

void find_difference(const ngkCurvePtr3& a, const ngkCurvePtr3& b, double tolerance,
                     CurveComparison& comparison) {
    const double longer = std::max(comparison.length_of_a, comparison.length_of_b);
    const double count = std::clamp(std::ceil(longer / tolerance), 1.0, most_samples);
    comparison.difference = Difference::course;
    comparison.allowed = nmkNgkCurveCompare::sample_tolerances * tolerance;
    take_samples(comparison, samples_of(a, static_cast<int>(count) + 1, tolerance),
                 samples_of(b, static_cast<int>(count) + 1, tolerance));
}

}  // namespace

std::string_view difference_key(Difference difference) {
    constexpr std::string_view keys[] = {"", "start", "end", "course"};
    return keys[static_cast<std::size_t>(difference)];
}

CurveComparison compare_curves(const ngkCurvePtr3& a, const ngkCurvePtr3& b, double tolerance) {
    CurveComparison comparison;
    comparison.length_of_a = Utils::get_arc_length(a, tolerance);
    comparison.length_of_b = Utils::get_arc_length(b, tolerance);
    if (nmkNgkCurveCompare::compare(a, b, tolerance)) return comparison;
    comparison.allowed = tolerance;
    if (has_other_end(*a, *b, 0.0, comparison)) {
        comparison.difference = Difference::start;
    } else if (has_other_end(*a, *b, 1.0, comparison)) {
        comparison.difference = Difference::end;
        comparison.at_length = comparison.length_of_a;
    } else {
        find_difference(a, b, tolerance, comparison);
    }
    return comparison;
}

}  // namespace nmk_curve
