#include "travel_box_tree.h"

#include <algorithm>
#include <numeric>

namespace nmk_ordering {

namespace {

constexpr std::size_t max_of_a_leaf = 4;

PlaneBox around(const PlaneBox& a, const PlaneBox& b) {
    return {{std::min(a.low.x, b.low.x), std::min(a.low.y, b.low.y)},
            {std::max(a.high.x, b.high.x), std::max(a.high.y, b.high.y)}};
}

}  // namespace

TravelBoxTree::TravelBoxTree(const std::vector<PlaneBox>& boxes) : m_numbers(boxes.size()) {
    std::iota(m_numbers.begin(), m_numbers.end(), std::size_t{0});
    if (!boxes.empty()) add_node(boxes, 0, boxes.size());
}

// Halves the boxes across the longer side of the box around them, so that the depth is the
// logarithm of their number.
std::size_t TravelBoxTree::add_node(const std::vector<PlaneBox>& boxes, std::size_t first,
                                    std::size_t count) {
    const std::size_t index = m_nodes.size();
    PlaneBox box = boxes[m_numbers[first]];
    for (std::size_t i = 1; i < count; ++i) box = around(box, boxes[m_numbers[first + i]]);
    m_nodes.push_back({box, first, count});
    if (count <= max_of_a_leaf) return index;
    const bool is_wide = box.high.x - box.low.x > box.high.y - box.low.y;
    const std::size_t half = count / 2;
    const auto begin = m_numbers.begin() + static_cast<std::ptrdiff_t>(first);
    std::nth_element(begin, begin + static_cast<std::ptrdiff_t>(half),
                     begin + static_cast<std::ptrdiff_t>(count), [&](std::size_t a, std::size_t b) {
                         return is_wide ? boxes[a].low.x < boxes[b].low.x
                                        : boxes[a].low.y < boxes[b].low.y;
                     });
    add_node(boxes, first, half);
    const std::size_t right = add_node(boxes, first + half, count - half);
    m_nodes[index].right = right;
    return index;
}

}  // namespace nmk_ordering
