// order_figures: the travel of the cutter between cuts, and the time that it takes.

#include "commands/order/order_figures.h"

namespace nmk_order {

namespace {

void add_to_total(TravelFigures& total, const TravelFigures& row) {
    total.travel += row.travel;
    total.per_axis += row.per_axis;
    total.seconds += row.seconds;
    total.bent_moves += row.bent_moves;
    total.start_leg += row.start_leg;
    total.end_leg += row.end_leg;
    if (row.longest > total.longest) {
        total.longest = row.longest;
        total.longest_from = row.longest_from;
        total.longest_to = row.longest_to;
    }
}

}  // namespace

TravelFigures measure_travel(const std::vector<nmk_job::JobItem>& items,
                             std::span<const nmk_job::JobCut> cuts, const TravelEnds& ends,
                             const RapidMoves& rapids) {
    TravelFigures figures;
    const std::size_t last = move_count(cuts.size(), ends) - 1;
    std::size_t move = 0;
    each_move(items, cuts, ends, [&](const giPoint3& from, const giPoint3& to) {
        double length = 0.0;
        int pieces = 0;
        each_piece(from, to, ends, [&](const giPoint3& begin, const giPoint3& end) {
            length += begin.distance(end);
            figures.per_axis += longest_component(begin, end);
            figures.seconds += rapid_seconds(begin, end, rapids);
            ++pieces;
        });
        figures.travel += length;
        figures.bent_moves += pieces > 1 ? 1U : 0U;
        if (length > figures.longest) {
            figures.longest = length;
            figures.longest_from = from;
            figures.longest_to = to;
        }
        if (move == 0 && ends.start) {
            figures.start_leg = length;
        }
        if (move == last && (ends.end || ends.is_closed)) {
            figures.end_leg = length;
        }
        ++move;
    });
    return figures;
}

OrderFigures measure_order(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                           const RapidMoves& rapids) {
    OrderFigures figures;
    figures.total.name = "total";
    for (const OrderRun& run : ordered.runs) {
        ToolFigures row{run.name, run.diameter, run.count,
                        measure_travel(job.items, run.of(ordered.before), run.ends, rapids),
                        measure_travel(job.items, run.of(ordered.after), run.ends, rapids)};
        figures.total.items += row.items;
        add_to_total(figures.total.before, row.before);
        add_to_total(figures.total.after, row.after);
        figures.tools.push_back(std::move(row));
    }
    return figures;
}

double travel_by(const TravelFigures& figures, nmkTravelMeasure kind) {
    switch (kind) {
        case nmkTravelMeasure::chebyshev:
            return figures.per_axis;
        case nmkTravelMeasure::time:
            return figures.seconds;
        case nmkTravelMeasure::length:
            break;
    }
    return figures.travel;
}

double saved_percent(double before, double after) {
    return before > 0.0 ? (before - after) / before * 100.0 : 0.0;
}

double saved_percent(const ToolFigures& row, nmkTravelMeasure kind) {
    return saved_percent(travel_by(row.before, kind), travel_by(row.after, kind));
}

}  // namespace nmk_order
