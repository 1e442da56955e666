#include "search/tiling.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nmk_search {

namespace {

// One over the least gap between two of the numbers; 1 when there is none.
double lines_in_cell(std::vector<double> cells) {
    double least = 0.0;
    std::sort(cells.begin(), cells.end());
    for (std::size_t i = 1; i < cells.size(); ++i) {
        const double gap = cells[i] - cells[i - 1];
        if (gap > 0.0 && (least == 0.0 || gap < least)) least = gap;
    }
    return least > 0.0 && std::isfinite(least) ? 1.0 / least : 1.0;
}

}  // namespace

Tiling::Tiling(std::vector<double> cells_x, std::vector<double> cells_y)
    : m_columns_in_cell(lines_in_cell(std::move(cells_x))),
      m_rows_in_cell(lines_in_cell(std::move(cells_y))) {}

}  // namespace nmk_search
