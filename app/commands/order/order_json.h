// order_json.h: the figures of an ordered job for programs, as one JSON object.
//
// Lengths are millimetres, times seconds. Members: file, type, across_tools, start,
// tolerance, rapid_mm_per_min, stopped, tool_changes, tools (one object each), total and notes
// (sentences for a person).
#pragma once

#include <string>

#include "commands/order/order_report.h"

namespace nmk_order {

std::string order_json(const OrderReport& report);

}  // namespace nmk_order
