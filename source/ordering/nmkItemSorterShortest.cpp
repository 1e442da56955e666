// nmkItemSorterShortest: which algorithm, and the annealing one. The elastic ring stands in
// nmkItemSorterShortest_ring.cpp.
#include <nmktoolbox/ordering/nmkAnneal.h>
#include <nmktoolbox/ordering/nmkAnnealStateNonReversible.h>
#include <nmktoolbox/ordering/nmkAnnealStatePoints.h>
#include <nmktoolbox/ordering/nmkAnnealStateReversibleLines.h>
#include <nmktoolbox/ordering/nmkItemSorterShortest.h>
#include <nmktoolbox/ordering/nmkSortItemLine.h>
#include <nmktoolbox/runtime/nmkVersion.h>

#include <vector>

#include "item_point.h"

namespace {

// Level of "itemsorter" at which the elastic ring is used.
constexpr int level_of_elastic_ring = 0;

bool is_given(const giPoint3& end) { return end.is_set(); }

void append_points(const nmkSortItemPrf& reference, giPoint3coPageArr& starts,
                   giPoint3coPageArr& ends) {
    const auto* item = nmkSortItemWithEndPoint::ut_dynamic_cast(reference.get());
    if (item != nullptr && is_given(item->get_end_point())) ends.add(item->get_end_point());
    starts.add(item_point(reference));
}

void reverse_line(nmkSortItemPrf& reference) {
    nmkSortItemLine* line = nmkSortItemLine::ut_dynamic_cast(reference.item());
    if (line != nullptr) line->reverse();
}

}  // namespace

nmkItemSorterShortest::nmkItemSorterShortest() = default;
nmkItemSorterShortest::~nmkItemSorterShortest() = default;

void nmkItemSorterShortest::add_item(nmkSortItemPrf item) { source.add_item(item); }

void nmkItemSorterShortest::add_items(nmkSortList& items) { source.add_items(items); }

nmkSortList& nmkItemSorterShortest::sort(double tolerance) {
    if (nmkVersion::get_from_manager("itemsorter").get_level() == level_of_elastic_ring) {
        sort_old(tolerance);
    } else {
        sort_by_annealing();
    }
    return result;
}

void nmkItemSorterShortest::sort_by_annealing() {
    giPoint3coPageArr starts;
    giPoint3coPageArr ends;
    while (source.forwards() != 0) append_points(source.read(), starts, ends);
    if (ends.size() == 0) {
        nmkAnnealStatePoints state(&starts);
        nmkAnnealStatePoints best(&starts);
        perform_annealing(state, best);
    } else if (reversible == 0) {
        nmkAnnealStateNonReversible state(starts, ends, closed);
        nmkAnnealStateNonReversible best(starts, ends, closed);
        perform_annealing(state, best);
    } else {
        // Deliberate: `closed` is not asked for, as lines that may be turned always form a tour.
        nmkAnnealStateReversibleLines state(starts, ends);
        nmkAnnealStateReversibleLines best(starts, ends);
        perform_annealing(state, best);
    }
}

void nmkItemSorterShortest::perform_annealing(nmkAnnealOrderState& state,
                                              nmkAnnealOrderState& best) {
    nmkAnneal anneal(state, best);
    anneal.set_progress(progress);
    anneal.simulate();
    intcoFixedArr order;
    best.get_items(order);
    intcoFixedArr flags;
    const auto* lines = nmkAnnealStateReversibleLines::ut_dynamic_cast(&best);
    if (lines != nullptr) lines->get_reverse_flags(flags);

    std::vector<nmkSortItemPrf> items;
    source.reset();
    while (source.forwards() != 0) items.push_back(source.read());
    result.clear();
    for (int k = 0; k < order.size(); ++k) {
        nmkSortItemPrf& item = items[static_cast<std::size_t>(order[k])];
        // Deliberate: the line turns about from how it stood, so a second sort can turn it back.
        if (lines != nullptr && flags[k] != 0) reverse_line(item);
        result.add_item(item);
    }
}
