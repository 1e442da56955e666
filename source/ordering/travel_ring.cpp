#include "travel_ring.h"

#include <algorithm>
#include <utility>

namespace nmk_ordering {

TravelRing::TravelRing(std::vector<int> order, std::vector<int> mates, std::vector<char> one_way)
    : m_size(static_cast<int>(order.size())),
      m_nodes(std::move(order)),
      m_positions(m_nodes.size()),
      m_mates(std::move(mates)),
      m_one_way(std::move(one_way)),
      m_counts(m_one_way.empty() ? 0 : m_nodes.size()) {
    for (int place = 0; place < m_size; ++place) m_positions[at(node(place))] = place;
    count_one_ways(0, m_size);
}

RemovedEdge TravelRing::removed_edge(int first, int second) const {
    const bool first_is_before = next(first) == second;
    return {position(first_is_before ? first : second), first_is_before};
}

bool TravelRing::is_possible(const ExchangeNodes& nodes, int edges, SegmentOrder& order) const {
    std::array<RemovedEdge, max_exchange_edges> removed;
    for (int edge = 0; edge < edges; ++edge) {
        removed[at(edge)] = removed_edge(nodes[at(2 * edge)], nodes[at(2 * edge + 1)]);
    }
    return order_segments(removed, edges, order) && (m_counts.empty() || keeps_directions(order));
}

bool TravelRing::has_one_way(int first, int last) const {
    const int before = first == 0 ? 0 : m_counts[at(first - 1)];
    const int turn = first <= last ? 0 : m_counts.back();
    return m_counts[at(last)] + turn > before;
}

bool TravelRing::keeps_directions(const SegmentOrder& order) const {
    bool forwards = false;
    bool backwards = false;
    for (int k = 0; k < order.count; ++k) {
        const int segment = order.segments[at(k)];
        const int before = order.cuts[at(segment == 0 ? order.count - 1 : segment - 1)];
        if (!has_one_way(wrapped(before + 1), order.cuts[at(segment)])) continue;
        (order.is_reversed[at(k)] ? backwards : forwards) = true;
    }
    return !(forwards && backwards);
}

int TravelRing::segment_length(const SegmentOrder& order, int segment) const {
    if (segment > 0) return order.cuts[at(segment)] - order.cuts[at(segment - 1)];
    return order.cuts[0] - order.cuts[at(order.count - 1)] + m_size;
}

// The longest; with one-way lines the first, so that no change goes over the end of the array,
// where the counts begin.
int TravelRing::kept_segment(const SegmentOrder& order) const {
    int kept = 0;
    for (int k = 1; k < order.count; ++k) {
        const int segment = order.segments[at(k)];
        const bool is_better =
            m_counts.empty()
                ? segment_length(order, segment) > segment_length(order, order.segments[at(kept)])
                : segment == 0;
        if (is_better) kept = k;
    }
    return kept;
}

// The new ring is read so that the kept segment stays as it is, and those next to it as far as they
// would not change.
void TravelRing::exchange(const SegmentOrder& order) {
    const int count = order.count;
    const int kept = kept_segment(order);
    const int kept_number = order.segments[at(kept)];
    const bool turned = order.is_reversed[at(kept)];
    const auto from = [&](int k) { return at((turned ? kept - k + count : kept + k) % count); };
    const auto stays = [&](int k) {
        return order.segments[from(k)] == (kept_number + k) % count &&
               order.is_reversed[from(k)] == turned;
    };
    int first = 1;
    int last = count - 1;
    while (first <= last && stays(first)) ++first;
    while (first <= last && stays(last)) --last;
    const int start = wrapped(order.cuts[at((kept_number + first - 1) % count)] + 1);
    std::array<Piece, max_exchange_edges> pieces{};
    for (int k = first; k <= last; ++k) {
        const int segment = order.segments[from(k)];
        const int before = order.cuts[at(segment == 0 ? count - 1 : segment - 1)];
        const int begin = wrapped(before + 1) - start;
        pieces[at(k - first)] = {begin < 0 ? begin + m_size : begin, segment_length(order, segment),
                                 order.is_reversed[from(k)] != turned};
    }
    rewrite(start, pieces.data(), last - first + 1);
}

void TravelRing::bridge(int position, int first, int second, int third) {
    const Piece pieces[] = {
        {first + second, third, false}, {first, second, false}, {0, first, false}};
    rewrite(wrapped(position + 1), pieces, 3);
}

void TravelRing::rewrite(int start, const Piece* pieces, int count) {
    int length = 0;
    for (int k = 0; k < count; ++k) length += pieces[k].length;
    log_nodes(start, length);
    const int* const before = m_log.data() + m_changes.back().nodes;
    int place = start;
    for (int k = 0; k < count; ++k) {
        const int step = pieces[k].is_reversed ? -1 : 1;
        const int* from = before + pieces[k].begin;
        if (pieces[k].is_reversed) from += pieces[k].length - 1;
        for (int i = 0; i < pieces[k].length; ++i, from += step) {
            m_nodes[at(place)] = *from;
            m_positions[at(*from)] = place;
            place = wrapped(place + 1);
        }
    }
    count_one_ways(start, length);
}

void TravelRing::log_nodes(int start, int length) {
    m_changes.push_back({start, length, m_log.size()});
    const int to_the_end = std::min(length, m_size - start);
    const auto begin = m_nodes.begin() + start;
    m_log.insert(m_log.end(), begin, begin + to_the_end);
    m_log.insert(m_log.end(), m_nodes.begin(), m_nodes.begin() + (length - to_the_end));
}

void TravelRing::count_one_ways(int start, int length) {
    if (m_counts.empty()) return;
    int place = start;
    for (int i = 0; i < length; ++i) {
        const int before = place == 0 ? 0 : m_counts[at(place - 1)];
        m_counts[at(place)] = before + m_one_way[at(node(place))];
        place = wrapped(place + 1);
    }
}

void TravelRing::undo(std::size_t mark) {
    while (m_changes.size() > mark) {
        const Change change = m_changes.back();
        m_changes.pop_back();
        int place = change.start;
        for (std::size_t i = change.nodes; i < m_log.size(); ++i) {
            m_nodes[at(place)] = m_log[i];
            m_positions[at(m_log[i])] = place;
            place = wrapped(place + 1);
        }
        m_log.resize(change.nodes);
        count_one_ways(change.start, change.length);
    }
}

void TravelRing::commit() {
    m_changes.clear();
    m_log.clear();
}

}  // namespace nmk_ordering
