// best_run.h: the cuts of one run in a near-optimal order.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "commands/order/travel_ends.h"
#include "commands/order/travel_measure.h"
#include "formats/job/job_order.h"

namespace nmk_order {

/// How long the search goes on; empty: as the library does without a limit.
struct SearchLimits {
    std::optional<std::int64_t> effort;  // steps for each item
    std::optional<double> seconds;
};

/// How the search ended.
enum class SearchEnd { finished, stopped, time_limit };

struct BestCuts {
    nmk_job::JobOrder cuts;
    SearchEnd end = SearchEnd::finished;
};

/// The cuts in the shortest order by `measure` that was found between these ends; slots may be cut
/// from either end. Never longer by it than the cuts as they come, nor, unless the search was ended
/// early, than the sorter of the type closest orders them. Of few cuts it is the shortest order
/// there is.
BestCuts best_cuts(const std::vector<nmk_job::JobItem>& items,
                   std::span<const nmk_job::JobCut> cuts, const TravelEnds& ends,
                   const TravelMeasure& measure, const SearchLimits& limits,
                   nmkProgressBreak* progress);

}  // namespace nmk_order
