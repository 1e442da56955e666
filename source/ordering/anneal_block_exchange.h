// anneal_block_exchange.h: the move that exchanges two equally long blocks of positions.
//
// It keeps the direction of every item. Positions are taken on a ring of n; block A starts at
// `first`, block B at `second`, both of `length` items, and they never overlap, even on the ring.
// An open path is treated as a ring too: the edge from last to first is added before the sum and
// removed after it.
#pragma once

#include <ncamcontainer/builtin_containers.h>

#include <algorithm>
#include <utility>

namespace nmk_ordering {

/// One move; `first` is below `second`.
struct BlockExchange {
    int first;
    int second;
    int length;
};

/// The length of the longest blocks that fit between two positions.
inline int longest_block(int first, int second, int n) {
    return std::min(second - first, (first - second) + n);
}

/// The positions that now hold the items that will be last and first after the move.
inline std::pair<int, int> ends_after_exchange(const BlockExchange& move, int n) {
    const auto [i, j, length] = move;
    int first = 0;
    if (i == 0 || i + length > n) {
        first = j - i;
    } else if (j == 0 || j + length > n) {
        first = ((i - j) + n) % n;
    }
    int last = n - 1;
    if (i + length > n - 1) {
        last = n - 1 + (j - i);
    } else if (j + length > n - 1) {
        last = (n - 1 + (i - j)) % n;
    }
    return {last, first};
}

/// The length that the order has after `move`.
///
///   current   the length before it
///   closed    whether the order leads back to its first item
///   distance  called with two item numbers, at most ten times
template <class Distance>
double length_after_exchange(const intcoFixedArr& items, const BlockExchange& move, double current,
                             bool closed, const Distance& distance) {
    const int n = items.size();
    const auto item = [&items, n](int position) { return items[(position + n) % n]; };
    double result = current;
    if (!closed) result += distance(items[n - 1], items[0]);

    const auto [i, j, length] = move;
    const int a0 = item(i), a_prev = item(i - 1);
    const int a_last = item(i + length - 1), a_next = item(i + length);
    const int b0 = item(j), b_prev = item(j - 1);
    const int b_last = item(j + length - 1), b_next = item(j + length);

    double removed1 = distance(a_last, a_next);
    double added1;
    if (a_last == b_prev) {  // block A runs straight into block B
        added1 = distance(b_last, a0);
    } else {
        removed1 += distance(b_prev, b0);
        added1 = distance(b_last, a_next) + distance(b_prev, a0);
    }
    double removed2 = distance(a_prev, a0);
    double added2;
    if (a_prev == b_last) {  // block B runs straight into block A
        added2 = distance(a_last, b0);
    } else {
        removed2 += distance(b_last, b_next);
        added2 = distance(a_prev, b0) + distance(a_last, b_next);
    }
    result += (added1 + added2) - (removed1 + removed2);

    if (!closed) {
        const auto [last, first] = ends_after_exchange(move, n);
        result -= distance(items[last], items[first]);
    }
    return result;
}

/// Makes the move.
inline void exchange_blocks(intcoFixedArr& items, const BlockExchange& move) {
    const int n = items.size();
    for (int m = 0; m < move.length; ++m) {
        std::swap(items[(move.first + m) % n], items[(move.second + m) % n]);
    }
}

}  // namespace nmk_ordering
