// order_picture.h: before and after side by side at one scale, a legend, and the figures below.
#pragma once

#include <string>
#include <vector>

#include "commands/order/order_report.h"

namespace nmk_order {

/// The picture as an SVG document. With `figures` the table is drawn below; a page has a table of
/// its own instead.
std::string order_picture(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                          const OrderReport& report, bool figures);

}  // namespace nmk_order
