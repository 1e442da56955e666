// measure_options: --measure, --rapid and --acceleration.

#include "commands/order/measure_options.h"

#include <algorithm>
#include <vector>

#include "formats/job/job_length.h"
#include "text/number_reader.h"

namespace nmk_order {

namespace {

// Of rates and accelerations: with them, no time of a move within the largest coordinates
// overflows.
constexpr double min_of_an_axis = 0.001;
constexpr double max_of_an_axis = 1e9;

/// One number for all axes, or one for each; Z is as Y where it is not given.
nmk_shell::Problem set_axes(std::optional<nmkTravelAxes>& axes, const std::string& value) {
    const std::vector<double> numbers = nmk_text::read_coordinates(value);
    const bool are_valid = std::all_of(numbers.begin(), numbers.end(), [](double number) {
        return min_of_an_axis <= number && number <= max_of_an_axis;
    });
    if (numbers.empty() || numbers.size() > 3 || !are_valid) {
        return "expected X or X,Y or X,Y,Z, each a number above 0 (0.001 to 1000000000)";
    }
    const double y = numbers.size() > 1 ? numbers[1] : numbers[0];
    axes = nmkTravelAxes{numbers[0], y, numbers.back()};
    return {};
}

void declare_axes(nmk_shell::OptionTable& table, const std::string& name,
                  std::optional<nmkTravelAxes>& axes, const std::string& about) {
    table.option(
        name, "X[,Y[,Z]]", [&axes](const std::string& value) { return set_axes(axes, value); },
        about);
}

nmkTravelAxes axes_in_mm(const nmkTravelAxes& axes, nmk_job::JobUnits units) {
    return {nmk_job::millimetres_of(axes.x, units), nmk_job::millimetres_of(axes.y, units),
            nmk_job::millimetres_of(axes.z, units)};
}

}  // namespace

void declare_measure_options(nmk_shell::OptionTable& table, MeasureOptions& options) {
    table.choice("--measure", "NAME", options.kind, travel_measures(),
                 "what the type best makes short: the length of the travel, its length by the "
                 "longest axis, or its time");
    const RapidMoves defaults;
    declare_axes(table, "--rapid", options.rate,
                 "rate of each axis in rapid moves, a minute; one number for all; for the times "
                 "(default " +
                     axes_text(defaults.rate) + " mm)");
    declare_axes(table, "--acceleration", options.acceleration,
                 "acceleration of each axis, a second squared, likewise (default " +
                     axes_text(defaults.acceleration) + " mm)");
}

TravelMeasure measure_in_mm(const MeasureOptions& options, nmk_job::JobUnits units) {
    TravelMeasure measure;
    measure.kind = options.kind;
    if (options.rate) {
        measure.rapids.rate = axes_in_mm(*options.rate, units);
    }
    if (options.acceleration) {
        measure.rapids.acceleration = axes_in_mm(*options.acceleration, units);
    }
    return measure;
}

}  // namespace nmk_order
