#include "search/place_index.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "search/plane_places.h"

namespace nmk_search {

namespace {

// Cells are wide beside the tolerance, so that most circles touch one. Rounding to the nearest puts
// the lattices that people use in the middle of their cells.
constexpr double cells_in_one = 1e4;

/// The numbers of the cells in which the neighbours of a coordinate can lie.
struct Cells {
    double first;
    double last;
};

constexpr std::size_t fewest_slots = 64;

// A rounded distance may be a little short.
constexpr double reach = 2.0 * nodes_are_one_place;

bool is_finite(const giPoint2& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

double cell_of(double coordinate) { return floor_of(coordinate * cells_in_one + 0.5); }

Cells cells_near(double coordinate) {
    return {cell_of(coordinate - reach), cell_of(coordinate + reach)};
}

/// The cell of a coordinate, and whether the circle around a point of it stays in there.
struct Standing {
    double cell;
    bool is_well_inside;
};

// Well inside a cell whose number is not large, rounding cannot matter.
Standing standing_of(double coordinate) {
    constexpr double well_inside = 0.25;
    constexpr double not_large = 1e9;
    static_assert(reach * cells_in_one < well_inside);
    const double along = coordinate * cells_in_one + 0.5;
    const double cell = floor_of(along);
    const bool is_in_middle = std::abs(along - cell - 0.5) < 0.5 - well_inside;
    return {cell, is_in_middle && std::abs(along) < not_large};
}

}  // namespace

Place_index::Place_index() : m_slots(fewest_slots) {}

void Place_index::add(const giPoint2& point, std::uint32_t position) {
    // Far more turns than hashing needs: points stand closer than the lattice was thought to be.
    constexpr std::size_t too_many_turns = 64;
    if (!is_finite(point)) return;
    if (2 * (m_in_use + 1) > m_slots.size()) {
        refile(2 * m_slots.size(), m_may_learn ? tiling_of_points() : m_tiling);
        m_may_learn = false;
    }
    const std::size_t turns = put(point, position);
    if (turns < too_many_turns || m_tiling.is_of_cells()) return;
    refile(m_slots.size(), Tiling());
}

// Answers how many slots were in the way. A point that is filed already needs no second slot.
std::size_t Place_index::put(const giPoint2& point, std::uint32_t position) {
    const std::uint64_t hash = m_tiling.hash_of(cell_of(point.x), cell_of(point.y));
    const auto rest = static_cast<std::uint32_t>(hash >> 32);
    std::size_t turn = 0;
    std::size_t at = home_of(hash);
    while (m_slots[at].position != none) {
        const Slot& slot = m_slots[at];
        if (slot.rest_of_hash == rest && slot.point == point) return turn;
        at = next_after(at, ++turn);
    }
    m_slots[at] = {point, rest, position};
    ++m_in_use;
    return turn;
}

// The places of one tile go on to one other tile's slots, and after some turns to any slot.
std::size_t Place_index::next_after(std::size_t slot, std::size_t turn) const {
    constexpr std::size_t turns_by_tile = 8;
    const std::size_t step = turn <= turns_by_tile ? turn * Tiling::slots_in_tile : 1;
    return (slot + step) & (m_slots.size() - 1);
}

void Place_index::refile(std::size_t slots, const Tiling& tiling) {
    const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(slots));
    m_tiling = tiling;
    ++m_filing;
    m_in_use = 0;
    for (const Slot& slot : old) {
        if (slot.position != none) put(slot.point, slot.position);
    }
}

Tiling Place_index::tiling_of_points() const {
    std::vector<double> cells_x, cells_y;
    for (const Slot& slot : m_slots) {
        if (slot.position == none) continue;
        cells_x.push_back(cell_of(slot.point.x));
        cells_y.push_back(cell_of(slot.point.y));
    }
    return {std::move(cells_x), std::move(cells_y)};
}

Place_index::Sought Place_index::seek(const giPoint2& point) const {
    const Standing x = standing_of(point.x);
    const Standing y = standing_of(point.y);
    const std::uint64_t hash = m_tiling.hash_of(x.cell, y.cell);
    const std::size_t home = home_of(hash);
    __builtin_prefetch(&m_slots[home]);
    __builtin_prefetch(&m_slots[next_after(home, 1)]);
    return {point, hash, m_filing, x.is_well_inside && y.is_well_inside};
}

template <bool any_will_do>
std::uint32_t Place_index::find(const Sought& sought) const {
    const bool hash_is_enough = sought.is_well_inside_cell && sought.filing == m_filing;
    return hash_is_enough ? find_in_cell<any_will_do>(sought.hash, sought.point)
                          : find_around<any_will_do>(sought.point);
}

template <bool any_will_do>
std::uint32_t Place_index::find_around(const giPoint2& point) const {
    if (!is_finite(point)) return none;
    const Cells x = cells_near(point.x);
    const Cells y = cells_near(point.y);
    std::uint32_t first = none;
    // Where adding 1 no longer changes the number of a cell, first and last are the same.
    for (double cell_x = x.first;; cell_x += 1.0) {
        for (double cell_y = y.first;; cell_y += 1.0) {
            const std::uint64_t hash = m_tiling.hash_of(cell_x, cell_y);
            first = std::min(first, find_in_cell<any_will_do>(hash, point));
            if (!(cell_y < y.last)) break;
        }
        if (!(cell_x < x.last)) break;
    }
    return first;
}

// The first point that is in the cell and one place with `point`, or any such point.
template <bool any_will_do>
std::uint32_t Place_index::find_in_cell(std::uint64_t hash, const giPoint2& point) const {
    const auto rest = static_cast<std::uint32_t>(hash >> 32);
    std::uint32_t first = none;
    std::size_t at = home_of(hash);
    for (std::size_t turn = 0; m_slots[at].position != none; at = next_after(at, ++turn)) {
        const Slot& slot = m_slots[at];
        if (slot.rest_of_hash != rest || slot.position >= first) continue;
        // Equal points need no root.
        if (slot.point != point && !are_one_place(slot.point, point)) continue;
        first = slot.position;
        if (any_will_do) break;
    }
    return first;
}

template std::uint32_t Place_index::find<true>(const Sought&) const;
template std::uint32_t Place_index::find<false>(const Sought&) const;

}  // namespace nmk_search
