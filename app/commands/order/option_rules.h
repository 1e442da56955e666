// option_rules.h: what the options of `nmk order` need of each other.
#pragma once

#include "commands/order/order_options.h"

namespace nmk_order {

/// The first problem of options that are fine each by itself; empty for none.
nmk_shell::Problem check_rules(const OrderOptions& options);

}  // namespace nmk_order
