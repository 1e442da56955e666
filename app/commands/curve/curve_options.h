// curve_options.h: the command line of `nmk curve`.
#pragma once

#include <geometry/giPoint2.h>
#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <optional>
#include <string>
#include <vector>

#include "shell/option_table.h"

namespace nmk_curve {

/// The shapes that are made, then what is done with files.
enum class Action {
    arc,
    circle,
    line,
    half_line,
    infinite_line,
    point,
    polyline,
    rectangle,
    filleted_rectangle,
    bezier,
    info,
    compare,
    closest,
    split
};

constexpr bool makes_shape(Action action) { return action < Action::info; }

/// The word of an action on the command line.
std::string action_name(Action action);

/// What a shape is made from beside its points. Unset where it is not given; lengths in mm, angles
/// in degrees.
struct ShapeOptions {
    giPoint3 centre;
    std::optional<double> radius;
    giUnitVec3 start_tangent, end_tangent;
    std::optional<double> sweep, minimum_angle;
    std::optional<double> from_angle, to_angle;
    giUnitVec3 normal, reference;
    giUnitVec3 direction;
    std::optional<giPoint2> size;
    std::optional<nmkNGKBezierMagnitudeMethod> magnitudes;
    std::optional<double> start_magnitude, end_magnitude;
};

/// The largest number of samples; they are all held in memory.
inline constexpr int max_points = 1'000'000;

struct CurveOptions {
    Action action = Action::info;
    std::vector<std::string> words;  // behind the action, as they are given
    std::vector<std::string> files;  // of info, compare, closest and split
    std::vector<giPoint3> points;    // of a shape; of closest the one point
    ShapeOptions shape;
    double tolerance = 0.001;          // mm
    std::optional<double> mm_of_unit;  // of files that do not state their unit
    std::optional<int> curve;          // number of the curve in a file of several, from 1
    std::optional<int> piece;          // points of a piece of a polyline, for split
    std::optional<int> sample_count;
    std::string output_file, svg_file;  // empty: not written
    bool csv = false, json = false, quiet = false;
};

void declare_curve_options(nmk_shell::OptionTable& table, CurveOptions& options);

}  // namespace nmk_curve
