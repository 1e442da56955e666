// travel_measure: what makes one travel better than another.

#include "commands/order/travel_measure.h"

#include <algorithm>
#include <cmath>

#include "text/number_format.h"

namespace nmk_order {

namespace {

constexpr nmk_shell::Choice<nmkTravelMeasure> named_measures[] = {
    {"length", nmkTravelMeasure::length},
    {"chebyshev", nmkTravelMeasure::chebyshev},
    {"time", nmkTravelMeasure::time}};

constexpr double seconds_in_a_minute = 60.0;

double axis_seconds(double way, double mm_per_minute, double acceleration) {
    const double rate = mm_per_minute / seconds_in_a_minute;
    const double at_rate = way / rate;
    const double of_a_ramp = rate / acceleration;
    return at_rate < of_a_ramp ? 2.0 * std::sqrt(way / acceleration) : at_rate + of_a_ramp;
}

}  // namespace

std::span<const nmk_shell::Choice<nmkTravelMeasure>> travel_measures() { return named_measures; }

std::string_view measure_name(nmkTravelMeasure kind) {
    return named_measures[static_cast<std::size_t>(kind)].name;
}

double longest_component(const giPoint3& from, const giPoint3& to) {
    return std::max({std::fabs(from.x - to.x), std::fabs(from.y - to.y), std::fabs(from.z - to.z)});
}

double rapid_seconds(const giPoint3& from, const giPoint3& to, const RapidMoves& rapids) {
    const auto& [rate, acceleration] = rapids;
    return std::max({axis_seconds(std::fabs(from.x - to.x), rate.x, acceleration.x),
                     axis_seconds(std::fabs(from.y - to.y), rate.y, acceleration.y),
                     axis_seconds(std::fabs(from.z - to.z), rate.z, acceleration.z)});
}

double way_by(const TravelMeasure& measure, const giPoint3& from, const giPoint3& to) {
    switch (measure.kind) {
        case nmkTravelMeasure::chebyshev:
            return longest_component(from, to);
        case nmkTravelMeasure::time:
            return rapid_seconds(from, to, measure.rapids);
        case nmkTravelMeasure::length:
            break;
    }
    return from.distance(to);
}

nmkTravelProblem empty_problem(const TravelMeasure& measure) {
    const auto& [rate, acceleration] = measure.rapids;
    nmkTravelProblem problem;
    problem.measure = measure.kind;
    problem.speed = {rate.x / seconds_in_a_minute, rate.y / seconds_in_a_minute,
                     rate.z / seconds_in_a_minute};
    problem.acceleration = acceleration;
    return problem;
}

std::string axes_text(const nmkTravelAxes& axes, nmk_job::JobUnits units) {
    const auto number = [&](double value) {
        return nmk_text::short_number(value / nmk_job::mm_of(units), 3);
    };
    return axes.x == axes.y && axes.y == axes.z
               ? number(axes.x)
               : "X " + number(axes.x) + ", Y " + number(axes.y) + ", Z " + number(axes.z);
}

}  // namespace nmk_order
