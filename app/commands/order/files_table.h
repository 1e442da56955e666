// files_table.h: the figures of several ordered files as one table.
#pragma once

#include <string>
#include <vector>

#include "commands/order/order_report.h"

namespace nmk_order {

/// A row for each file and one for all of them, in millimetres, then the notes of each file, in
/// lines that each end with a line feed.
std::string files_table(const std::vector<OrderReport>& reports);

}  // namespace nmk_order
