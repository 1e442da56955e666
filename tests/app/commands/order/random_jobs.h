// random_jobs.h: jobs of random items, the ends of their travel, and the shortest of all orders.
#pragma once

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "commands/order/order_figures.h"
#include "formats/job/job_order.h"

namespace nmk_order {

inline nmk_job::JobItem hole(double x, double y) { return {giPoint3(x, y, 0.0), std::nullopt, 0}; }

inline nmk_job::MachiningJob job_of(std::vector<nmk_job::JobItem> items) {
    nmk_job::MachiningJob job;
    job.tools.push_back({"T1", 1.0});
    job.items = std::move(items);
    return job;
}

/// Holes, with slots among them if `has_slots`, on 100 by 100 mm.
inline nmk_job::MachiningJob random_items(std::mt19937& words, std::size_t count, bool has_slots) {
    const auto draw = [&] { return static_cast<double>(words() % 10001) / 100.0; };
    std::vector<nmk_job::JobItem> items;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = draw();
        items.push_back(hole(x, draw()));
        if (has_slots && words() % 2 == 0) {
            const double end_x = draw();
            items.back().end = giPoint3(end_x, draw(), 0.0);
        }
    }
    return job_of(std::move(items));
}

inline const TravelEnds all_ends[] = {{},
                                      {giPoint3(0, 0, 0), {}, false},
                                      {giPoint3(0, 0, 0), giPoint3(0, 0, 0), false},
                                      {giPoint3(20, -5, 0), giPoint3(90, 120, 0), false},
                                      {{}, giPoint3(50, 50, 0), false},
                                      {{}, {}, true},
                                      {giPoint3(0, 0, 0), {}, true}};

/// The shortest travel of all orders and directions, by this measure.
inline double shortest_travel(const nmk_job::MachiningJob& job, const TravelEnds& ends,
                              const TravelMeasure& measure = {}) {
    nmk_job::JobOrder order = nmk_job::order_of_file(job);
    const auto travel = [&] {
        return travel_by(measure_travel(job.items, order, ends, measure.rapids), measure.kind);
    };
    double shortest = travel();
    const auto by_item = [](const nmk_job::JobCut& a, const nmk_job::JobCut& b) {
        return a.item < b.item;
    };
    do {
        for (unsigned directions = 0; directions < 1U << order.size(); ++directions) {
            bool fits = true;
            for (std::size_t i = 0; i < order.size(); ++i) {
                order[i].reversed = ((directions >> i) & 1U) != 0;
                fits = fits && (job.items[order[i].item].end || !order[i].reversed);
            }
            if (fits) {
                shortest = std::min(shortest, travel());
            }
        }
    } while (std::next_permutation(order.begin(), order.end(), by_item));
    return shortest;
}

}  // namespace nmk_order
