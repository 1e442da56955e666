// travel_measure.h: what makes one travel better than another: its length, its length by the
// longest axis, or the time that it takes.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/ordering/nmkTravelProblem.h>

#include <span>
#include <string>
#include <string_view>

#include "formats/job/machining_job.h"
#include "shell/option_values.h"

namespace nmk_order {

/// How the axes of the machine move without cutting. The defaults are common for routers and
/// drilling machines.
struct RapidMoves {
    nmkTravelAxes rate{10000.0, 10000.0, 10000.0};       // mm per minute
    nmkTravelAxes acceleration{1000.0, 1000.0, 1000.0};  // mm per second squared
};

struct TravelMeasure {
    nmkTravelMeasure kind = nmkTravelMeasure::length;  // what the type best makes short
    RapidMoves rapids;                                 // for the times, whatever the kind
};

/// The values of --measure.
std::span<const nmk_shell::Choice<nmkTravelMeasure>> travel_measures();

/// "length", "chebyshev" or "time".
std::string_view measure_name(nmkTravelMeasure kind);

/// The length of a move by its longest axis, in mm.
double longest_component(const giPoint3& from, const giPoint3& to);

/// The seconds of one rapid move, which begins and ends at rest. Each axis moves on its own and the
/// slowest decides; with the way s, the rate v and the acceleration a of an axis it takes
///
///   s / v + v / a       where it reaches its rate, s >= v^2 / a
///   2 sqrt(s / a)       where it brakes before
///
/// Source: uniformly accelerated motion with a trapezoid of speed. nmkTravelMeasure::time is the
/// same.
double rapid_seconds(const giPoint3& from, const giPoint3& to, const RapidMoves& rapids);

/// The way from one place to another by the measure, in mm or in seconds.
double way_by(const TravelMeasure& measure, const giPoint3& from, const giPoint3& to);

/// A problem of this measure, without items and keep-outs.
nmkTravelProblem empty_problem(const TravelMeasure& measure);

/// "10000", or "X 10000, Y 8000, Z 5000" where the axes differ, in these units.
std::string axes_text(const nmkTravelAxes& axes,
                      nmk_job::JobUnits units = nmk_job::JobUnits::millimetres);

}  // namespace nmk_order
