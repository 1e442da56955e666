// measure_options: --measure, --rapid and --acceleration.

#include "commands/order/measure_options.h"

#include <algorithm>
#include <vector>

#include "text/number_reader.h"

namespace nmk_order {

namespace {

// Of rates and accelerations: with them, no time of a move within the largest coordinates
// overflows.
constexpr double min_of_an_axis = 0.001;
constexpr double max_of_an_axis = 1e9;

/// One number for all axes, or one for each; Z is as Y where it is not given.
nmk_shell::Problem set_axes(nmkTravelAxes& axes, const std::string& value) {
    const std::vector<double> numbers = nmk_text::read_coordinates(value);
    const bool are_valid = std::all_of(numbers.begin(), numbers.end(), [](double number) {
        return min_of_an_axis <= number && number <= max_of_an_axis;
    });
    if (numbers.empty() || numbers.size() > 3 || !are_valid) {
        return "expected X or X,Y or X,Y,Z, each a number above 0 (0.001 to 1000000000)";
    }
    const double y = numbers.size() > 1 ? numbers[1] : numbers[0];
    axes = {numbers[0], y, numbers.back()};
    return {};
}

void declare_axes(nmk_shell::OptionTable& table, const std::string& name, nmkTravelAxes& axes,
                  const std::string& about) {
    nmk_shell::Argument& added = table.option(
        name, "X[,Y[,Z]]", [&axes](const std::string& value) { return set_axes(axes, value); },
        about);
    added.preset = axes_text(axes);
}

}  // namespace

void declare_measure_options(nmk_shell::OptionTable& table, TravelMeasure& measure) {
    table.choice("--measure", "NAME", measure.kind, travel_measures(),
                 "what the type best makes short: the length of the travel, its length by the "
                 "longest axis, or its time");
    declare_axes(table, "--rapid", measure.rapids.rate,
                 "mm per minute of each axis in rapid moves, one number for all, for the times");
    declare_axes(table, "--acceleration", measure.rapids.acceleration,
                 "mm per second squared of each axis, likewise");
}

}  // namespace nmk_order
