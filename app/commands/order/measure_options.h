// measure_options.h: --measure, --rapid and --acceleration.
#pragma once

#include <optional>

#include "commands/order/travel_measure.h"
#include "formats/job/machining_job.h"
#include "shell/option_table.h"

namespace nmk_order {

/// As given: rates and accelerations in the unit of the command line (order_options.h) per minute
/// and per second squared; empty where an option is missing.
struct MeasureOptions {
    nmkTravelMeasure kind = nmkTravelMeasure::length;
    std::optional<nmkTravelAxes> rate;
    std::optional<nmkTravelAxes> acceleration;
};

void declare_measure_options(nmk_shell::OptionTable& table, MeasureOptions& options);

/// The measure of values that were given in `units`, with the defaults of RapidMoves.
TravelMeasure measure_in_mm(const MeasureOptions& options, nmk_job::JobUnits units);

}  // namespace nmk_order
