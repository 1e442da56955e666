// order_page.h: one self-contained page with the picture and the figures; nothing is fetched.
#pragma once

#include <string>

#include "commands/order/order_job.h"
#include "commands/order/order_table.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

std::string order_page(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                       const OrderReport& report);

}  // namespace nmk_order
