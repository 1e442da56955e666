// closing_observer.h: the cells that a search has closed, and the progress that is reported of
// them.
#pragma once

#include <nmktoolbox/search/nmkLatticeRoute.h>

#include <vector>

class nmkProgressBreak;

namespace nmk_route {

class ClosingObserver : public nmkLatticeObserver {
  public:
    /// `progress` is borrowed and may be null.
    explicit ClosingObserver(nmkProgressBreak* progress) : m_progress(progress) {}

    /// False, which stops the search, when the progress reporter asks for a break. It is asked
    /// every 1024 cells.
    bool cell_closed(nmkLatticeCell cell) override;

    /// In the order of closing.
    std::vector<nmkLatticeCell> cells;

  private:
    nmkProgressBreak* m_progress;
};

}  // namespace nmk_route
