// travel_exchange: segments have two slots each, 2i where they begin and 2i + 1 where they end.
#include "travel_exchange.h"

#include <cstddef>

namespace nmk_ordering {

namespace {

constexpr std::size_t at(int index) { return static_cast<std::size_t>(index); }

using Slots = std::array<int, 2 * max_exchange_edges>;

// The slot of each node t of the exchange; sorts the cuts by the way.
Slots slots_of(const std::array<RemovedEdge, max_exchange_edges>& removed, int count,
               SegmentOrder& order) {
    Slots slots{};
    for (int edge = 0; edge < count; ++edge) {
        int rank = 0;
        for (int other = 0; other < count; ++other) {
            if (removed[at(other)].cut < removed[at(edge)].cut) ++rank;
        }
        order.cuts[at(rank)] = removed[at(edge)].cut;
        const int before = 2 * rank + 1;
        const int after = rank + 1 < count ? 2 * (rank + 1) : 0;
        const bool first_is_before = removed[at(edge)].first_is_before;
        slots[at(2 * edge)] = first_is_before ? before : after;
        slots[at(2 * edge + 1)] = first_is_before ? after : before;
    }
    return slots;
}

}  // namespace

bool order_segments(const std::array<RemovedEdge, max_exchange_edges>& removed, int count,
                    SegmentOrder& order) {
    const Slots slots = slots_of(removed, count, order);
    Slots joined{};
    for (int edge = 0; edge < count; ++edge) {
        const int from = slots[at(2 * edge + 1)];
        const int to = slots[at(edge + 1 < count ? 2 * edge + 2 : 0)];
        joined[at(from)] = to;
        joined[at(to)] = from;
    }
    order.count = 0;
    int entered = 0;
    do {
        order.segments[at(order.count)] = entered / 2;
        order.is_reversed[at(order.count)] = entered % 2 != 0;
        ++order.count;
        entered = joined[at(entered ^ 1)];
    } while (entered != 0 && order.count < count);
    return entered == 0 && order.count == count;
}

}  // namespace nmk_ordering
