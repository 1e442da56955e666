// filleted_pocket: the outline of a pocket, points along it, and what becomes of it with a smaller
// cutter.
#include <nmktoolbox/curves.h>

#include <cstdio>

int main() {
    constexpr double tolerance = 0.001;
    const giPoint2 size(60.0, 40.0);
    const auto outline = [&](double radius) {
        return nmkNgkMakeUtils::make_filleted_rectangle(giWorkplane3(), size, radius);
    };
    const ngkCurvePtr3 pocket = outline(8.0);
    std::printf("length %.2f\n", nmkNgkPolylineUtils::get_arc_length(pocket, tolerance));

    giPoint3coPageArr points;
    doublecoPageArr parameters;
    nmkNgkPolylineUtils::evaluate_equally_spaced_points(pocket, 6, tolerance, points, parameters);
    for (const giPoint3& point : points) std::printf("%6.2f %6.2f\n", point.x, point.y);

    std::printf("made again %d, with radius 7.9 %d\n",
                nmkNgkCurveCompare::compare(pocket, outline(8.0), tolerance),
                nmkNgkCurveCompare::compare(pocket, outline(7.9), tolerance));
}
