// sorted_run.h: the cuts of one run in the order of a sorter of the library.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkSortType.h>

#include <span>
#include <vector>

#include "commands/order/travel_ends.h"
#include "formats/job/job_order.h"

namespace nmk_order {

struct SortedCuts {
    nmk_job::JobOrder cuts;
    bool stopped = false;  // a stop left cuts undone; they follow in the order that they had
};

/// The cuts as a sorter of this type orders them from `start`, within `tolerance`; mm.
SortedCuts sorted_cuts(const std::vector<nmk_job::JobItem>& items,
                       std::span<const nmk_job::JobCut> cuts, nmkSortType type,
                       const giPoint3& start, double tolerance, nmkProgressBreak* progress);

/// The library orders lines around a ring, which has no first item: cuts a ring of slots open where
/// the travel between these ends is then shortest. The order around the ring does not change, and
/// holes alone stay as they are.
void open_ring(const std::vector<nmk_job::JobItem>& items, const TravelEnds& ends,
               nmk_job::JobOrder& cuts);

}  // namespace nmk_order
