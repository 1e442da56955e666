// order_table.h: the figures of an ordered job as a table for a person, and as JSON for a program.
#pragma once

#include <string>
#include <vector>

#include "commands/order/order_figures.h"
#include "commands/order/order_options.h"

namespace nmk_order {

/// Everything that is reported of one run of `nmk order`.
struct OrderReport {
    OrderOptions options;
    OrderRequest request;
    OrderFigures figures;
    std::size_t tool_changes_before = 0;
    std::size_t tool_changes_after = 0;
    bool stopped = false;
    std::vector<std::string> notes;
};

/// The column headings and, for each tool and the total, the cells; all as text, without padding.
struct FigureCells {
    std::vector<std::string> headings;
    std::vector<std::string> units;              // below the headings; "" where there is none
    std::vector<std::vector<std::string>> rows;  // one for each tool, and the total
};

FigureCells figure_cells(const OrderReport& report);

/// "402 items, 4 tools, sorted by shortest from (0, 0)"
std::string report_summary(const OrderReport& report);

/// "Rapids at 10000 mm/min ..." with the seconds before and after.
std::string rapid_summary(const OrderReport& report);

/// Summary, table, rapids and notes, in lines that each end with a line feed.
std::string order_table(const OrderReport& report);

}  // namespace nmk_order
