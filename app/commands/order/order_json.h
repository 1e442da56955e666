// order_json.h: the figures of an ordered job for programs, as one JSON object.
//
// Lengths are millimetres, times seconds. docs/json.md describes the members for users,
// docs/schemas/order.json for programs.
#pragma once

#include <string>
#include <vector>

#include "commands/order/order_report.h"

namespace nmk_order {

std::string order_json(const OrderReport& report);

/// One object with the objects of several files.
std::string files_json(const std::vector<OrderReport>& reports);

}  // namespace nmk_order
