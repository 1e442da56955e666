// order_page.h: one self-contained HTML page with before and after, which can be zoomed and played,
// and the figures.
#pragma once

#include <string>

#include "commands/order/order_report.h"

namespace nmk_order {

std::string order_page(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                       const OrderReport& report);

}  // namespace nmk_order
