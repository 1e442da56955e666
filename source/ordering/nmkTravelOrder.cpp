// nmkTravelOrder: what is done in which order; the parts are in the files travel_*.
#include <nmktoolbox/ordering/nmkSortItemLine.h>
#include <nmktoolbox/ordering/nmkSortItemWithEndPoint.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "point_of_item.h"
#include "travel_budget.h"
#include "travel_check.h"
#include "travel_check_keep_outs.h"
#include "travel_exact.h"
#include "travel_network.h"
#include "travel_search.h"
#include "travel_start.h"
#include "travel_turns.h"

namespace {

using nmk_ordering::TravelBudget;
using nmk_ordering::TravelNetwork;
using nmk_ordering::TravelSequence;

// Steps where no number is given: some for each item, fewer where there are very many items, whose
// cells do without the last few parts in a thousand. Few items get more, which takes no time. A
// line gets a part of what a point gets: the legs between lines are long, and near lines are not
// near each other in the order, so that a step takes longer and gains less.
constexpr std::int64_t least_steps = 500;
constexpr std::int64_t steps_of_an_item = 10;
constexpr std::int64_t items_with_all_steps = 20000;
constexpr std::int64_t steps_of_a_further_item = 6;
constexpr double part_of_a_line = 0.1;

nmkTravelResult bad_problem(std::string error) {
    nmkTravelResult result;
    result.stop_reason = nmkTravelStopReason::bad_problem;
    result.error = std::move(error);
    return result;
}

nmkTravelResult result_of(const TravelNetwork& network, TravelSequence sequence) {
    nmkTravelResult result;
    const double length = network.length(sequence);
    const bool is_time = network.metric().measure == nmkTravelMeasure::time;
    result.length = is_time ? length : length * network.unit();
    result.order = std::move(sequence.order);
    result.is_reversed = std::move(sequence.is_reversed);
    return result;
}

nmkTravelResult exact(const TravelNetwork& network) {
    TravelSequence sequence;
    if (network.items() > 0) sequence = nmk_ordering::exact_sequence(network);
    nmkTravelResult result = result_of(network, std::move(sequence));
    result.is_shortest = true;
    result.lower_bound = result.length;
    return result;
}

nmkTravelResult searched(TravelNetwork& network, TravelBudget& budget) {
    const TravelSequence start = nmk_ordering::start_sequence(network);
    network.chain_groups(start);
    TravelSequence sequence = nmk_ordering::search_sequence(network, start, budget);
    nmk_ordering::choose_turns(network, sequence);
    nmkTravelResult result = result_of(network, std::move(sequence));
    result.steps = budget.made();
    if (budget.is_over()) return result;
    const double bound = nmk_ordering::lower_bound(network);
    const bool is_time = network.metric().measure == nmkTravelMeasure::time;
    result.lower_bound = std::min(result.length, is_time ? bound : bound * network.unit());
    return result;
}

// A reversed line is taken as it is travelled.
nmkTravelItem travel_item(const nmkSortItemPrf& reference, bool is_one_way) {
    const giPoint3& start = nmk_ordering::point_of_item(reference);
    const auto* with_end = nmkSortItemWithEndPoint::ut_dynamic_cast(reference.get());
    if (with_end == nullptr || !with_end->get_end_point().is_set()) {
        return nmkTravelItem::point(start);
    }
    const auto* line = nmkSortItemLine::ut_dynamic_cast(reference.get());
    giPoint3 from = start;
    giPoint3 to = with_end->get_end_point();
    if (line != nullptr && line->reversed() != 0) std::swap(from, to);
    return is_one_way ? nmkTravelItem::one_way_line(from, to) : nmkTravelItem::line(from, to);
}

}  // namespace

nmkTravelOrder::nmkTravelOrder(nmkTravelProblem problem) : m_problem(std::move(problem)) {}

std::int64_t nmkTravelOrder::default_steps(std::int64_t items, std::int64_t lines) {
    const std::int64_t further = std::max<std::int64_t>(items - items_with_all_steps, 0);
    const std::int64_t of_points =
        (items - further) * steps_of_an_item + further * steps_of_a_further_item;
    if (lines <= 0 || of_points <= least_steps) return std::max(least_steps, of_points);
    const double full = static_cast<double>(items - lines);
    const double share = full + static_cast<double>(lines) * part_of_a_line;
    const double steps = static_cast<double>(of_points) * share / static_cast<double>(items);
    return std::max(least_steps, static_cast<std::int64_t>(steps));
}

nmkTravelResult nmkTravelOrder::find() const {
    std::string fault = nmk_ordering::fault_of(m_problem);
    if (!fault.empty()) return bad_problem(std::move(fault));
    const auto count = static_cast<std::int64_t>(m_problem.items.size());
    const auto lines = std::count_if(
        m_problem.items.begin(), m_problem.items.end(),
        [](const nmkTravelItem& item) { return item.kind != nmkTravelItemKind::point; });
    TravelBudget budget(m_steps.value_or(default_steps(count, lines)), m_seconds, m_progress);
    TravelNetwork network(m_problem);
    if (!std::isfinite(network.penalty())) {
        return bad_problem("speed, acceleration: expected moves of a time that is finite");
    }
    fault = nmk_ordering::fault_of_places(network, budget);
    if (!fault.empty()) return bad_problem(std::move(fault));
    nmkTravelResult result = count <= max_exact_items ? exact(network) : searched(network, budget);
    budget.finish();
    result.stop_reason = budget.stop_reason();
    return result;
}

nmkTravelResult nmkTravelOrder::sort(nmkSortList& items, bool is_one_way, nmkTravelProblem settings,
                                     nmkProgressBreak* progress,
                                     std::optional<std::int64_t> steps) {
    std::vector<nmkSortItemPrf> references;
    settings.items.clear();
    for (const nmkSortItemPrf& reference : items) {
        references.push_back(reference);
        settings.items.push_back(travel_item(reference, is_one_way));
    }
    nmkTravelOrder order(std::move(settings));
    order.set_progress(progress);
    if (steps) order.set_steps(*steps);
    nmkTravelResult result = order.find();
    if (result.stop_reason == nmkTravelStopReason::bad_problem) return result;
    items.clear();
    for (const int item : result.order) {
        nmkSortItemPrf& reference = references[static_cast<std::size_t>(item)];
        auto* const line = nmkSortItemLine::ut_dynamic_cast(reference.get());
        if (line != nullptr && result.is_reversed[static_cast<std::size_t>(item)]) line->reverse();
        items.add_item(reference);
    }
    return result;
}
