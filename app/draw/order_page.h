// order_page.h: one self-contained page with the picture and the figures; nothing is fetched.
#pragma once

#include <string>

#include "order/machining_job.h"
#include "order/order_job.h"
#include "order/order_table.h"

namespace nmk_app {

std::string order_page(const MachiningJob& job, const OrderedJob& ordered,
                       const OrderReport& report);

}  // namespace nmk_app
