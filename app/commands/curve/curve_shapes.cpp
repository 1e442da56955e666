// curve_shapes: the curve that the arguments of `nmk curve` describe.

#include "commands/curve/curve_shapes.h"

#include <geometry/giCircle3.h>
#include <geometry/giWorkplane3.h>
#include <ngk/ngkBezCurve.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <numbers>
#include <string>

namespace nmk_curve {

namespace {

using Make = nmkNgkMakeUtils;

/// What the arguments of an action have to be.
[[noreturn]] void expect(const CurveOptions& options, const std::string& what) {
    throw nmk_text::Error{{}, 0, "nmk curve " + action_name(options.action) + ": expected " + what};
}

void expect_points(const CurveOptions& options, std::size_t count, const std::string& what) {
    if (options.points.size() != count) expect(options, what);
}

giUnitVec3 normal_of(const ShapeOptions& shape) {
    return shape.normal.is_set() ? shape.normal : giUnitVec3(giAxis::z);
}

/// The plane through the point: without options that of the world.
giWorkplane3 plane_at(const giPoint3& origin, const ShapeOptions& shape) {
    const giUnitVec3 y_axis = shape.reference.is_set() ? shape.reference : giUnitVec3(giAxis::y);
    return {origin, y_axis, normal_of(shape)};
}

constexpr const char* arc_arguments =
    "START MIDDLE END; START END with --start-tangent, and --centre or --end-tangent; START with "
    "--centre, --start-tangent and --sweep; or --centre, --radius, --from-angle and --to-angle";

ngkCurvePtr3 arc_by_angles(const CurveOptions& options) {
    const ShapeOptions& shape = options.shape;
    if (!shape.centre.is_set() || !shape.radius || !shape.from_angle || !shape.to_angle) {
        expect(options, arc_arguments);
    }
    constexpr double radians = std::numbers::pi / 180.0;
    return Make::make_arc(ngkT(0, *shape.from_angle * radians), ngkT(0, *shape.to_angle * radians),
                          giCircle3(shape.centre, normal_of(shape), *shape.radius));
}

ngkCurvePtr3 arc_by_sweep(const CurveOptions& options) {
    const ShapeOptions& shape = options.shape;
    if (!shape.centre.is_set() || !shape.start_tangent.is_set() || !shape.sweep) {
        expect(options, arc_arguments);
    }
    return Make::make_arc(options.points[0], shape.centre, shape.start_tangent, *shape.sweep,
                          options.tolerance, giAngle(giDegrees, shape.minimum_angle.value_or(0.0)));
}

ngkCurvePtr3 arc_between_ends(const CurveOptions& options) {
    const ShapeOptions& shape = options.shape;
    if (!shape.start_tangent.is_set()) expect(options, arc_arguments);
    const giPoint3& start = options.points[0];
    const giPoint3& end = options.points[1];
    if (shape.centre.is_set()) {
        return Make::make_arc(start, end, shape.centre, shape.start_tangent, options.tolerance);
    }
    return shape.end_tangent.is_set() ? Make::make_arc(start, end, shape.start_tangent,
                                                       shape.end_tangent, options.tolerance)
                                      : Make::make_arc(start, end, shape.start_tangent);
}

ngkCurvePtr3 make_arc(const CurveOptions& options) {
    switch (options.points.size()) {
        case 0:
            return arc_by_angles(options);
        case 1:
            return arc_by_sweep(options);
        case 2:
            return arc_between_ends(options);
        case 3:
            return Make::make_arc(options.points[0], options.points[1], options.points[2]);
        default:
            expect(options, arc_arguments);
    }
}

ngkCurvePtr3 make_circle(const CurveOptions& options) {
    const ShapeOptions& shape = options.shape;
    if (options.points.size() == 3 && !shape.radius) {
        return Make::make_circle(
            giCircle3(options.points[0], options.points[1], options.points[2]));
    }
    if (options.points.size() != 1 || !shape.radius) {
        expect(options, "three points, or the centre with --radius");
    }
    if (shape.reference.is_set()) {
        return Make::make_circle(plane_at(options.points[0], shape), *shape.radius);
    }
    return Make::make_circle(giCircle3(options.points[0], normal_of(shape), *shape.radius));
}

ngkCurvePtr3 make_line(const CurveOptions& options) {
    expect_points(options, 2, "two points");
    return Make::make_line(options.points[0], options.points[1]);
}

ngkCurvePtr3 make_endless_line(const CurveOptions& options) {
    expect_points(options, 1, "a point, and --direction");
    if (!options.shape.direction.is_set()) expect(options, "a point, and --direction");
    return options.action == Action::half_line
               ? Make::make_half_line(options.points[0], options.shape.direction)
               : Make::make_inf_line(options.points[0], options.shape.direction);
}

ngkCurvePtr3 make_point(const CurveOptions& options) {
    expect_points(options, 1, "one point");
    return Make::make_point_curve(options.points[0]);
}

ngkCurvePtr3 make_polyline(const CurveOptions& options) {
    if (options.points.size() < 2) expect(options, "two points or more");
    giPoint3coDynArr points;
    for (const giPoint3& point : options.points) points.add(point);
    return Make::make_polyline(points);
}

ngkCurvePtr3 make_rectangle(const CurveOptions& options) {
    const ShapeOptions& shape = options.shape;
    const bool is_filleted = options.action == Action::filleted_rectangle;
    if (options.points.size() != 1 || !shape.size || shape.radius.has_value() != is_filleted) {
        expect(options, is_filleted ? "a corner, --size and --radius" : "a corner, and --size");
    }
    const giWorkplane3 plane = plane_at(options.points[0], shape);
    return is_filleted ? Make::make_filleted_rectangle(plane, *shape.size, *shape.radius)
                       : Make::make_rectangle(plane, *shape.size);
}

ngkCurvePtr3 bezier_between_ends(const CurveOptions& options) {
    const ShapeOptions& shape = options.shape;
    const giPoint3& start = options.points[0];
    const giPoint3& end = options.points[1];
    if (shape.start_magnitude.has_value() != shape.end_magnitude.has_value()) {
        expect(options, "both --start-magnitude and --end-magnitude, or neither");
    }
    if (!shape.start_magnitude) {
        return Make::make_bezier_curve(start, end, shape.start_tangent, shape.end_tangent,
                                       shape.magnitudes.value_or(nmkNGKBezierMagnitudeArc));
    }
    if (!shape.start_tangent.is_set() || !shape.end_tangent.is_set() || shape.magnitudes) {
        expect(options, "--start-tangent and --end-tangent with the magnitudes, not --magnitudes");
    }
    return Make::make_bezier_curve(start, end, shape.start_tangent, shape.end_tangent,
                                   *shape.start_magnitude, *shape.end_magnitude);
}

ngkCurvePtr3 make_bezier(const CurveOptions& options) {
    constexpr std::size_t most_points = ngk_max_degree + 1;
    const ShapeOptions& shape = options.shape;
    const std::size_t count = options.points.size();
    if (count < 2 || count > most_points) expect(options, "2 to 26 points");
    if (count == 2) return bezier_between_ends(options);
    if (shape.start_tangent.is_set() || shape.end_tangent.is_set() || shape.magnitudes ||
        shape.start_magnitude || shape.end_magnitude) {
        expect(options, "two points with tangents, or control points without");
    }
    return ngkCurvePtr3(new ngkBezCurve3(options.points));
}

struct Maker {
    Action action;
    ngkCurvePtr3 (*make)(const CurveOptions&);
    const char* expected;  // of arguments that make no curve
};

constexpr const char* direction_and_point = "a point and a direction that make a line";

constexpr Maker makers[] = {
    {Action::arc, make_arc,
     "ends, tangents and a centre that one arc has: ends equally far from the centre, tangents at "
     "a right angle to the radius and not against the arc, an angle above 0"},
    {Action::circle, make_circle, "three points that are not on one line, or a radius above 0"},
    {Action::line, make_line, "points that are more than 1e-05 apart"},
    {Action::half_line, make_endless_line, direction_and_point},
    {Action::infinite_line, make_endless_line, direction_and_point},
    {Action::point, make_point, "a point that can be used"},
    {Action::polyline, make_polyline, "points that are more than 1e-05 apart"},
    {Action::rectangle, make_rectangle, "sides that are longer than 1e-05"},
    {Action::filleted_rectangle, make_rectangle,
     "sides that are longer than 1e-05 and at least twice the radius"},
    {Action::bezier, make_bezier,
     "points that are more than 1e-05 apart, and tangents that lead from the start to the end"}};

ngkCurvePtr3 made_curve(const CurveOptions& options) {
    for (const Maker& maker : makers) {
        if (maker.action != options.action) continue;
        ngkCurvePtr3 curve = maker.make(options);
        if (!curve || !curve->is_valid()) expect(options, maker.expected);
        return curve;
    }
    expect(options, "a shape");
}

}  // namespace

nmk_text::Result<ngkCurvePtr3> make_shape(const CurveOptions& options) {
    return nmk_text::value_or_error({}, [&] { return made_curve(options); });
}

}  // namespace nmk_curve
