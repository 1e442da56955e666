// best_run: the cuts of one run in a near-optimal order.

#include "commands/order/best_run.h"

#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "commands/order/avoided.h"
#include "commands/order/order_figures.h"
#include "commands/order/sorted_run.h"
#include "commands/order/time_break.h"

namespace nmk_order {

namespace {

using Items = std::vector<nmk_job::JobItem>;
using Cuts = std::span<const nmk_job::JobCut>;

nmkTravelProblem problem_of(const Items& items, Cuts cuts, const TravelEnds& ends,
                            const TravelMeasure& measure) {
    nmkTravelProblem problem = empty_problem(measure);
    problem.items.reserve(cuts.size());
    for (const nmk_job::JobCut& cut : cuts) {
        const nmk_job::JobItem& item = items[cut.item];
        problem.items.push_back(item.end ? nmkTravelItem::line(item.start, *item.end)
                                         : nmkTravelItem::point(item.start));
    }
    if (ends.avoided != nullptr) {
        problem.keep_outs = ends.avoided->shapes();
    }
    if (ends.is_closed) {
        problem.end = nmkTravelEnd::at_start();  // first_on_ring chooses the first item
        return problem;
    }
    if (ends.start) {
        problem.start = nmkTravelEnd::at_place(*ends.start);
    }
    if (ends.end) {
        problem.end = nmkTravelEnd::at_place(*ends.end);
    }
    return problem;
}

/// Finds the place to which the way is shortest by a measure. Most ways are never searched for: a
/// way around keep-outs is at least as long as the straight line.
class NearestPlace {
  public:
    NearestPlace(const giPoint3& from, const TravelEnds& ends, const TravelMeasure& measure)
        : m_from(from), m_ends(ends), m_measure(measure) {}

    /// True if the way to this place is shorter than those before.
    bool is_nearer(const giPoint3& place) {
        if (!(way_by(m_measure, m_from, place) < m_least)) {
            return false;
        }
        const double length = length_to(place);
        if (!(length < m_least)) {
            return false;
        }
        m_least = length;
        return true;
    }

  private:
    double length_to(const giPoint3& place) const {
        double length = 0.0;
        each_piece(m_from, place, m_ends, [&](const giPoint3& from, const giPoint3& to) {
            length += way_by(m_measure, from, to);
        });
        return length;
    }

    const giPoint3& m_from;
    const TravelEnds& m_ends;
    const TravelMeasure& m_measure;
    double m_least = std::numeric_limits<double>::max();
};

/// Turns a closed order so that the way from `start` to its first cut is shortest. The ring may be
/// travelled in both directions, which are equally long.
void begin_ring_near(const Items& items, const TravelEnds& ends, const TravelMeasure& measure,
                     nmk_job::JobOrder& ring) {
    NearestPlace nearest(*ends.start, ends, measure);
    std::size_t first = 0;
    bool is_backwards = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const nmk_job::JobItem& item = items[ring[i].item];
        if (nearest.is_nearer(nmk_job::entry_of(item, ring[i].reversed))) {
            first = i;
            is_backwards = false;
        }
        if (nearest.is_nearer(nmk_job::exit_of(item, ring[i].reversed))) {
            first = i;
            is_backwards = true;
        }
    }
    std::rotate(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(first), ring.end());
    if (is_backwards) {
        std::reverse(ring.begin() + 1, ring.end());
        for (nmk_job::JobCut& cut : ring) {
            cut.reversed = items[cut.item].end.has_value() && !cut.reversed;
        }
    }
}

nmkTravelResult search(nmkTravelProblem problem, const SearchLimits& limits,
                       nmkProgressBreak* progress) {
    const auto items = static_cast<std::int64_t>(problem.items.size());
    nmkTravelOrder order(std::move(problem));
    order.set_progress(progress);
    if (limits.effort) {
        order.set_steps(*limits.effort * items);
    }
    if (limits.seconds) {
        order.set_time_limit(*limits.seconds);
    }
    return order.find();
}

nmk_job::JobOrder cuts_of(const nmkTravelResult& result, const Items& items, Cuts cuts) {
    nmk_job::JobOrder order;
    order.reserve(cuts.size());
    for (const int number : result.order) {
        const auto i = static_cast<std::size_t>(number);
        order.push_back({cuts[i].item, items[cuts[i].item].end && result.is_reversed[i]});
    }
    return order;
}

SearchEnd end_of(nmkTravelStopReason reason) {
    return reason == nmkTravelStopReason::stopped      ? SearchEnd::stopped
           : reason == nmkTravelStopReason::time_limit ? SearchEnd::time_limit
                                                       : SearchEnd::finished;
}

/// Keeps the shorter of two orders, by a measure.
class ShortestOrder {
  public:
    ShortestOrder(const Items& items, const TravelEnds& ends, const TravelMeasure& measure,
                  nmk_job::JobOrder order)
        : m_items(items),
          m_ends(ends),
          m_measure(measure),
          m_order(std::move(order)),
          m_travel(travel_of(m_order)) {}

    void offer(nmk_job::JobOrder order) {
        const double travel = travel_of(order);
        if (travel < m_travel) {
            m_travel = travel;
            m_order = std::move(order);
        }
    }
    nmk_job::JobOrder take() { return std::move(m_order); }

  private:
    double travel_of(const nmk_job::JobOrder& order) const {
        return travel_by(measure_travel(m_items, order, m_ends, m_measure.rapids), m_measure.kind);
    }

    const Items& m_items;
    const TravelEnds& m_ends;
    const TravelMeasure& m_measure;
    nmk_job::JobOrder m_order;
    double m_travel;
};

}  // namespace

BestCuts best_cuts(const Items& items, Cuts cuts, const TravelEnds& ends,
                   const TravelMeasure& measure, const SearchLimits& limits,
                   nmkProgressBreak* progress) {
    if (cuts.empty()) {
        return {};
    }
    TimeBreak time(limits.seconds);
    const nmkTravelResult result = search(problem_of(items, cuts, ends, measure), limits, progress);
    SearchEnd end = end_of(result.stop_reason);
    nmk_job::JobOrder order = cuts_of(result, items, cuts);
    if (order.size() != cuts.size()) {
        return {{cuts.begin(), cuts.end()}, end};  // a bad problem, which the readers leave none of
    }
    if (ends.is_closed && ends.start) {
        begin_ring_near(items, ends, measure, order);
    }
    ShortestOrder best(items, ends, measure, std::move(order));
    best.offer({cuts.begin(), cuts.end()});
    if (end == SearchEnd::finished && !result.is_shortest) {
        const giPoint3 start = ends.start.value_or(giPoint3(0.0, 0.0, 0.0));
        SortedCuts closest = sorted_cuts(items, cuts, nmkSortTypeClosest, start, 0.0, &time);
        if (closest.stopped) {
            end = SearchEnd::time_limit;
        } else {
            best.offer(std::move(closest.cuts));
        }
    }
    return {best.take(), end};
}

}  // namespace nmk_order
