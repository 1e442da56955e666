// order_picture.h: before and after side by side on one scale, a legend, and the figures below.
#pragma once

#include <string>
#include <vector>

#include "commands/order/order_job.h"
#include "commands/order/order_table.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

/// The picture as an SVG document. With `figures` the table stands below; a page that has its own
/// table goes without.
std::string order_picture(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                          const OrderReport& report, bool figures);

}  // namespace nmk_order
