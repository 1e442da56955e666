// nmkItemSorterShortest: the choice of the algorithm, and annealing. The elastic ring is in
// nmkItemSorterShortest_ring.cpp.
#include <nmktoolbox/ordering/nmkAnneal.h>
#include <nmktoolbox/ordering/nmkAnnealStateNonReversible.h>
#include <nmktoolbox/ordering/nmkAnnealStatePoints.h>
#include <nmktoolbox/ordering/nmkAnnealStateReversibleLines.h>
#include <nmktoolbox/ordering/nmkItemSorterShortest.h>
#include <nmktoolbox/ordering/nmkSortItemLine.h>
#include <nmktoolbox/runtime/nmkVersion.h>

#include <utility>
#include <vector>

#include "point_of_item.h"

using nmk_ordering::point_of_item;

namespace {

// Level of "itemsorter" at which the elastic ring is used.
constexpr int level_of_elastic_ring = 0;

bool is_given(const giPoint3& end) { return end.is_set(); }

void append_points(const nmkSortItemPrf& reference, giPoint3coPageArr& starts,
                   giPoint3coPageArr& ends) {
    const auto* item = nmkSortItemWithEndPoint::ut_dynamic_cast(reference.get());
    if (item != nullptr && is_given(item->get_end_point())) ends.add(item->get_end_point());
    starts.add(point_of_item(reference));
}

void reverse_line(nmkSortItemPrf& reference) {
    nmkSortItemLine* line = nmkSortItemLine::ut_dynamic_cast(reference.item());
    if (line != nullptr) line->reverse();
}

}  // namespace

// The item at each position, and for reversible lines whether it is reversed.
struct nmkItemSorterShortest::Route {
    intcoFixedArr order;
    intcoFixedArr reversed;
};

nmkItemSorterShortest::nmkItemSorterShortest() = default;
nmkItemSorterShortest::~nmkItemSorterShortest() = default;

void nmkItemSorterShortest::add_item(nmkSortItemPrf item) { source.add_item(item); }

void nmkItemSorterShortest::add_items(nmkSortList& items) { source.add_items(items); }

// Of a list whose walk was broken off only the rest is sorted, and that is copied.
void nmkItemSorterShortest::lend(nmkSortPointList& items) {
    int walked = 0;
    while (items.forwards() != 0) ++walked;
    if (walked == items.size()) {
        m_lent = &items;
        return;
    }
    for (int skipped = items.size() - walked; skipped > 0; --skipped) items.forwards();
    source.add_items(items);
}

nmkSortList& nmkItemSorterShortest::sort(double tolerance) {
    if (nmkVersion::get_from_manager("itemsorter").get_level() == level_of_elastic_ring) {
        if (m_lent != nullptr) source.add_items(*std::exchange(m_lent, nullptr));
        sort_old(tolerance);
    } else {
        lay_out(find_route());
    }
    return result;
}

// The memory of the annealing is freed before the route is laid out: many items need much of it.
nmkItemSorterShortest::Route nmkItemSorterShortest::find_route() {
    giPoint3coPageArr starts;
    giPoint3coPageArr ends;
    nmkSortPointList& items = items_to_sort();
    while (items.forwards() != 0) append_points(items.read(), starts, ends);
    if (ends.size() == 0) {
        nmkAnnealStatePoints state(&starts);
        nmkAnnealStatePoints best(&starts);
        return perform_annealing(state, best);
    }
    if (reversible == 0) {
        nmkAnnealStateNonReversible state(starts, ends, closed);
        nmkAnnealStateNonReversible best(starts, ends, closed);
        return perform_annealing(state, best);
    }
    // Deliberate: `closed` is not used here: reversible lines are always ordered as a tour.
    nmkAnnealStateReversibleLines state(starts, ends);
    nmkAnnealStateReversibleLines best(starts, ends);
    return perform_annealing(state, best);
}

nmkItemSorterShortest::Route nmkItemSorterShortest::perform_annealing(nmkAnnealOrderState& state,
                                                                      nmkAnnealOrderState& best) {
    nmkAnneal anneal(state, best);
    anneal.set_progress(progress);
    anneal.simulate();
    Route route;
    best.get_items(route.order);
    const auto* lines = nmkAnnealStateReversibleLines::ut_dynamic_cast(&best);
    if (lines != nullptr) lines->get_reverse_flags(route.reversed);
    return route;
}

void nmkItemSorterShortest::lay_out(const Route& route) {
    std::vector<nmkSortItemPrf*> references;
    nmkSortPointList& items = items_to_sort();
    references.reserve(static_cast<std::size_t>(items.size()));
    items.reset();
    while (items.forwards() != 0) references.push_back(&items.read());
    result.clear();
    for (int k = 0; k < route.order.size(); ++k) {
        nmkSortItemPrf& item = *references[static_cast<std::size_t>(route.order[k])];
        // Deliberate: the flag of the line is negated, not set, so a second sort can cancel it.
        if (k < route.reversed.size() && route.reversed[k] != 0) reverse_line(item);
        result.add_item(item);
    }
}
