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

bool is_finite(const giPoint2& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

double cell_of(double coordinate) { return floor_of(coordinate * cells_in_one + 0.5); }

Cells cells_near(double coordinate) {
    constexpr double reach = 2.0 * nodes_are_one_place;  // a rounded distance may be a little short
    // Well inside a cell whose number is not large, rounding cannot matter.
    constexpr double well_inside = 0.25;
    constexpr double not_large = 1e9;
    static_assert(reach * cells_in_one < well_inside);
    const double along = coordinate * cells_in_one + 0.5;
    if (std::abs(along) < not_large) {
        const double cell = floor_of(along);
        const double inside = along - cell;
        if (inside > well_inside && inside < 1.0 - well_inside) return {cell, cell};
    }
    return {cell_of(coordinate - reach), cell_of(coordinate + reach)};
}

constexpr std::size_t fewest_slots = 64;

}  // namespace

void Place_index::add(const giPoint2& point, std::uint32_t position) {
    // Far more turns than hashing needs: points stand closer than the lattice was thought to be.
    constexpr std::size_t too_many_turns = 64;
    if (!is_finite(point)) return;
    if (2 * (m_points.size() + 1) > m_slots.size()) {
        refile(std::max(fewest_slots, 2 * m_slots.size()));
    }
    m_points.push_back(point);
    m_positions.push_back(position);
    const std::size_t turns = put(static_cast<std::uint32_t>(m_points.size() - 1));
    if (turns < too_many_turns || m_tiling.is_of_cells()) return;
    m_tiling = Tiling();
    refile(m_slots.size());
}

// Answers how many slots were in the way. A point that is filed already needs no second slot.
std::size_t Place_index::put(std::uint32_t number) {
    const std::uint64_t hash = hash_of(m_points[number]);
    const auto rest = static_cast<std::uint32_t>(hash >> 32);
    std::size_t turn = 0;
    std::size_t at = home_of(hash);
    while (m_slots[at].number != none) {
        const Slot& slot = m_slots[at];
        if (slot.rest_of_hash == rest && m_points[slot.number] == m_points[number]) return turn;
        at = next_after(at, ++turn);
    }
    m_slots[at] = {rest, number};
    return turn;
}

std::uint64_t Place_index::hash_of(const giPoint2& point) const {
    return m_tiling.hash_of(cell_of(point.x), cell_of(point.y));
}

// The places of one tile go on to one other tile's slots, and after some turns to any slot.
std::size_t Place_index::next_after(std::size_t slot, std::size_t turn) const {
    constexpr std::size_t turns_by_tile = 8;
    const std::size_t step = turn <= turns_by_tile ? turn * Tiling::slots_in_tile : 1;
    return (slot + step) & (m_slots.size() - 1);
}

void Place_index::refile(std::size_t slots) {
    if (m_may_learn && !m_points.empty()) {
        m_tiling = tiling_of_points();
        m_may_learn = false;
    }
    m_slots.assign(slots, Slot());
    for (std::uint32_t number = 0; number < m_points.size(); ++number) put(number);
}

Tiling Place_index::tiling_of_points() const {
    std::vector<double> cells_x, cells_y;
    for (const giPoint2& point : m_points) {
        cells_x.push_back(cell_of(point.x));
        cells_y.push_back(cell_of(point.y));
    }
    return {std::move(cells_x), std::move(cells_y)};
}

std::uint32_t Place_index::first_at(const giPoint2& point) const {
    if (m_points.empty() || !is_finite(point)) return none;
    const Cells x = cells_near(point.x);
    const Cells y = cells_near(point.y);
    std::uint32_t first = none;
    // Where adding 1 no longer changes the number of a cell, first and last are the same.
    for (double cell_x = x.first;; cell_x += 1.0) {
        for (double cell_y = y.first;; cell_y += 1.0) {
            first = std::min(first, first_in_cell(cell_x, cell_y, point));
            if (!(cell_y < y.last)) break;
        }
        if (!(cell_x < x.last)) break;
    }
    return first == none ? none : m_positions[first];
}

void Place_index::prefetch(const giPoint2& point) const {
    if (m_points.empty() || !is_finite(point)) return;
    __builtin_prefetch(&m_slots[home_of(hash_of(point))]);
}

// The number of the first point that is in the cell and one place with `point`.
std::uint32_t Place_index::first_in_cell(double cell_x, double cell_y,
                                         const giPoint2& point) const {
    const std::uint64_t hash = m_tiling.hash_of(cell_x, cell_y);
    const auto rest = static_cast<std::uint32_t>(hash >> 32);
    std::uint32_t first = none;
    std::size_t at = home_of(hash);
    for (std::size_t turn = 0; m_slots[at].number != none; at = next_after(at, ++turn)) {
        const Slot& slot = m_slots[at];
        if (slot.rest_of_hash != rest || slot.number >= first) continue;
        if (are_one_place(m_points[slot.number], point)) first = slot.number;
    }
    return first;
}

}  // namespace nmk_search
