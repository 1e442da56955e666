// measure_options.h: --measure, --rapid and --acceleration.
#pragma once

#include "commands/order/travel_measure.h"
#include "shell/option_table.h"

namespace nmk_order {

/// Rates are mm per minute and accelerations mm per second squared, whatever the unit of the file.
void declare_measure_options(nmk_shell::OptionTable& table, TravelMeasure& measure);

}  // namespace nmk_order
