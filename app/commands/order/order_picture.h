// order_picture.h: before and after side by side at one scale, a legend, and the figures below.
#pragma once

#include <string>

#include "commands/order/order_report.h"

namespace nmk_order {

/// The picture as an SVG document.
std::string order_picture(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                          const OrderReport& report);

/// "travel 14520.2 mm", in the unit of the file
std::string before_figures(const OrderReport& report);

/// "travel 4470.4 mm, saved 69.2 %"
std::string after_figures(const OrderReport& report);

}  // namespace nmk_order
