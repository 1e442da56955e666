// sorted_run: the cuts of one run in the order of a sorter of the library.

#include "commands/order/sorted_run.h"

#include <nmktoolbox/ordering/nmkPointSorter.h>
#include <nmktoolbox/ordering/nmkSortItemLine.h>

#include <algorithm>
#include <deque>
#include <limits>

namespace nmk_order {

namespace {

using Items = std::vector<nmk_job::JobItem>;

bool has_slots(const Items& items, std::span<const nmk_job::JobCut> cuts) {
    return std::any_of(cuts.begin(), cuts.end(),
                       [&](const nmk_job::JobCut& cut) { return items[cut.item].end.has_value(); });
}

/// One library item for each cut, with the position of the cut as its index. A deque, since the
/// library borrows the items.
///
/// The sorters need an end on all items or on none: beside slots, a hole is a line of no length.
std::deque<nmkSortItemLine> library_items(const Items& items,
                                          std::span<const nmk_job::JobCut> cuts) {
    const bool are_lines = has_slots(items, cuts);
    const giPoint3 no_end;  // unset, which the sorters read as a point without an end
    std::deque<nmkSortItemLine> result;
    for (const nmk_job::JobCut& cut : cuts) {
        const nmk_job::JobItem& item = items[cut.item];
        const giPoint3& end = are_lines ? item.end.value_or(item.start) : no_end;
        result.emplace_back(item.start, end).set_index(static_cast<int>(result.size()) - 1);
    }
    return result;
}

}  // namespace

SortedCuts sorted_cuts(const Items& items, std::span<const nmk_job::JobCut> cuts, nmkSortType type,
                       const giPoint3& start, double tolerance, nmkProgressBreak* progress) {
    std::deque<nmkSortItemLine> lines = library_items(items, cuts);
    nmkPointSorter sorter(type);
    for (nmkSortItemLine& line : lines) {
        sorter.add_item(nmkSortItemPrf(&line));
    }
    nmkSortList& sorted = sorter.sort(tolerance, start, progress);
    SortedCuts result;
    result.cuts.reserve(cuts.size());
    std::vector<bool> taken(cuts.size(), false);
    sorted.reset();
    while (sorted.forwards() != 0) {
        const auto i = static_cast<std::size_t>(sorted.read()->index());
        if (!taken[i]) {
            taken[i] = true;
            const bool is_slot = items[cuts[i].item].end.has_value();
            result.cuts.push_back({cuts[i].item, is_slot && lines[i].reversed() != 0});
        }
    }
    result.stopped = result.cuts.size() < cuts.size();
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        if (!taken[i]) {
            result.cuts.push_back(cuts[i]);
        }
    }
    return result;
}

void open_ring(const Items& items, const TravelEnds& ends, nmk_job::JobOrder& cuts) {
    if (cuts.size() < 3 || !has_slots(items, cuts)) {
        return;
    }
    double least = std::numeric_limits<double>::max();
    std::size_t first = 0;
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        const nmk_job::JobCut& last = cuts[i == 0 ? cuts.size() - 1 : i - 1];
        const giPoint3& entry = nmk_job::entry_of(items[cuts[i].item], cuts[i].reversed);
        const giPoint3& exit = nmk_job::exit_of(items[last.item], last.reversed);
        double more = 0.0;  // than around the ring
        if (!ends.is_closed) {
            more -= exit.distance(entry);
        }
        if (ends.start) {
            more += ends.start->distance(entry);
        }
        if (ends.end) {
            more += exit.distance(*ends.end);
        }
        if (more < least) {
            least = more;
            first = i;
        }
    }
    std::rotate(cuts.begin(), cuts.begin() + static_cast<std::ptrdiff_t>(first), cuts.end());
}

}  // namespace nmk_order
