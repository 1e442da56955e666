// travel_ends.h: where the travel of a run begins and ends, and the moves that it consists of.
#pragma once

#include <geometry/giPoint3.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "formats/job/job_order.h"

namespace nmk_order {

class Avoided;

/// Where the travel of a run begins and ends. The moves from the start place and to the end place
/// are travel as the moves between the cuts are.
struct TravelEnds {
    std::optional<giPoint3> start;                // mm; empty: with the first cut, wherever that is
    std::optional<giPoint3> end;                  // mm; empty: with the last cut
    bool is_closed = false;                       // back to the first cut; `end` is then empty
    std::shared_ptr<const Avoided> avoided = {};  // keep-outs that every move goes around
};

/// The places of a move from its beginning to its end, with those at which it bends. All items that
/// are ordered can be reached.
std::vector<giPoint3> places_of_move(const giPoint3& from, const giPoint3& to,
                                     const TravelEnds& ends);

/// Calls `visit(from, to)` for each straight piece of a move.
template <class Visit>
void each_piece(const giPoint3& from, const giPoint3& to, const TravelEnds& ends,
                const Visit& visit) {
    if (ends.avoided == nullptr) {
        visit(from, to);
        return;
    }
    const std::vector<giPoint3> places = places_of_move(from, to, ends);
    for (std::size_t i = 1; i < places.size(); ++i) {
        visit(places[i - 1], places[i]);
    }
}

/// The number of moves that each_move visits.
inline std::size_t move_count(std::size_t cuts, const TravelEnds& ends) {
    return cuts == 0 ? 0
                     : cuts - 1 + (ends.start ? 1U : 0U) + (ends.end || ends.is_closed ? 1U : 0U);
}

/// Calls `visit(from, to)` for each move of a run: from the start place to the first cut, between
/// the cuts, and to the end. Without cuts there are none.
template <class Visit>
void each_move(const std::vector<nmk_job::JobItem>& items, std::span<const nmk_job::JobCut> cuts,
               const TravelEnds& ends, const Visit& visit) {
    if (cuts.empty()) {
        return;
    }
    const auto entry = [&](const nmk_job::JobCut& cut) -> const giPoint3& {
        return nmk_job::entry_of(items[cut.item], cut.reversed);
    };
    const auto exit = [&](const nmk_job::JobCut& cut) -> const giPoint3& {
        return nmk_job::exit_of(items[cut.item], cut.reversed);
    };
    if (ends.start) {
        visit(*ends.start, entry(cuts.front()));
    }
    for (std::size_t i = 1; i < cuts.size(); ++i) {
        visit(exit(cuts[i - 1]), entry(cuts[i]));
    }
    if (ends.end || ends.is_closed) {
        visit(exit(cuts.back()), ends.is_closed ? entry(cuts.front()) : *ends.end);
    }
}

}  // namespace nmk_order
