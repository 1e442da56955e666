#include "travel_ring.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace nmk_ordering {

TravelRing::TravelRing(std::vector<int> order, std::vector<int> mates, std::vector<char> one_way)
    : m_size(static_cast<int>(order.size())),
      m_nodes(std::move(order)),
      m_positions(m_nodes.size()),
      m_mates(std::move(mates)),
      m_one_way(std::move(one_way)),
      m_counts(m_one_way.empty() ? 0 : m_nodes.size()),
      m_one_ways(static_cast<int>(std::count(m_one_way.begin(), m_one_way.end(), 1))) {
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

// False also for a segment that has all of them, where the others have none.
bool TravelRing::has_one_way(int first, int last) const {
    return m_counts[at(last)] != m_counts[at(first == 0 ? m_size - 1 : first - 1)];
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

int TravelRing::longest_segment(const SegmentOrder& order) const {
    int longest = 0;
    for (int k = 1; k < order.count; ++k) {
        const int length = segment_length(order, order.segments[at(k)]);
        if (length > segment_length(order, order.segments[at(longest)])) longest = k;
    }
    return longest;
}

// The new ring is read so that the kept segment stays as it is, and those next to it as far as they
// would not change.
void TravelRing::exchange(const SegmentOrder& order) {
    const int count = order.count;
    const int kept = longest_segment(order);
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
        const int* const begin = before + pieces[k].begin;
        const int size = pieces[k].length;
        place = pieces[k].is_reversed ? put(std::make_reverse_iterator(begin + size), size, place)
                                      : put(begin, size, place);
    }
    count_one_ways(start, length);
}

// In two runs where the nodes go over the end of the array. Returns the position after them.
template <class From>
int TravelRing::put(From from, int count, int place) {
    const int to_the_end = std::min(count, m_size - place);
    from = put_run(from, to_the_end, place);
    if (to_the_end < count) put_run(from, count - to_the_end, 0);
    return wrapped(place + count);
}

template <class From>
From TravelRing::put_run(From from, int count, int place) {
    int* const nodes = m_nodes.data() + place;
    int* const positions = m_positions.data();
    for (int i = 0; i < count; ++i, ++from) {
        nodes[i] = *from;
        positions[nodes[i]] = place + i;
    }
    return from;
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
    int count = m_counts[at(start == 0 ? m_size - 1 : start - 1)];
    int place = start;
    for (int i = 0; i < length; ++i) {
        count += m_one_way[at(node(place))];
        if (count == m_one_ways) count = 0;
        m_counts[at(place)] = count;
        place = wrapped(place + 1);
    }
}

void TravelRing::undo(std::size_t mark) {
    while (m_changes.size() > mark) {
        const Change change = m_changes.back();
        m_changes.pop_back();
        put(m_log.data() + change.nodes, change.length, change.start);
        m_log.resize(change.nodes);
        count_one_ways(change.start, change.length);
    }
}

void TravelRing::commit() {
    m_changes.clear();
    m_log.clear();
}

}  // namespace nmk_ordering
