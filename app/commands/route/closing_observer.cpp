// closing_observer: the cells that a search has closed, and the progress that is reported of them.

#include "commands/route/closing_observer.h"

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <cstddef>

namespace nmk_route {

namespace {

constexpr std::size_t report_every = 1024;  // closed cells

}  // namespace

bool ClosingObserver::cell_closed(nmkLatticeCell cell) {
    cells.push_back(cell);
    if (m_progress == nullptr || cells.size() % report_every != 0) {
        return true;
    }
    return m_progress->jump_to(static_cast<double>(cells.size())) == 0;
}

}  // namespace nmk_route
