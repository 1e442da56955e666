// order_table.h: the figures of an ordered job as a table for a person.
#pragma once

#include <string>
#include <vector>

#include "commands/order/order_report.h"

namespace nmk_order {

/// The column headings and, for each tool and the total, the cells; all as text, without padding.
struct FigureCells {
    std::vector<std::string> headings;
    std::vector<std::string> units;              // below the headings; "" for a column without unit
    std::vector<std::vector<std::string>> rows;  // one for each tool, and the total
};

FigureCells figure_cells(const OrderReport& report);

/// Summary, table, rapids and notes, in lines of at most 80 columns (but for a long file name) that
/// each end with a line feed.
std::string order_table(const OrderReport& report);

}  // namespace nmk_order
