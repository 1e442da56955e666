#include "search/place_index.h"

#include <algorithm>
#include <bit>
#include <cmath>

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

// std::floor, which not every processor that we run on has as an instruction; and one zero, not
// two.
double floor_of(double value) {
    constexpr double whole_from_here = 4503599627370496.0;  // 2 to the 52
    if (!(std::abs(value) < whole_from_here)) return value;
    const auto whole = static_cast<double>(static_cast<std::int64_t>(value));
    return whole > value ? whole - 1.0 : whole;
}

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

std::size_t hash_of(double cell_x, double cell_y) {
    std::uint64_t mixed = std::bit_cast<std::uint64_t>(cell_x) * 0x9e3779b97f4a7c15u;
    mixed = std::rotl(mixed, 29) ^ std::bit_cast<std::uint64_t>(cell_y);
    mixed ^= mixed >> 32;
    mixed *= 0xd6e8feb86659fd93u;
    return static_cast<std::size_t>(mixed ^ (mixed >> 32));
}

}  // namespace

void Place_index::add(const giPoint2& point, std::uint32_t position) {
    if (!is_finite(point)) return;
    if (2 * (m_used + 1) > m_slots.size()) grow();
    put({point, position});
    ++m_used;
}

void Place_index::put(const Slot& slot) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash_of(cell_of(slot.point.x), cell_of(slot.point.y)) & mask;
    while (m_slots[at].position != none) at = (at + 1) & mask;
    m_slots[at] = slot;
}

void Place_index::grow() {
    constexpr std::size_t fewest_slots = 64;
    std::vector<Slot> slots(std::max(fewest_slots, 2 * m_slots.size()));
    m_slots.swap(slots);
    for (const Slot& slot : slots) {
        if (slot.position != none) put(slot);
    }
}

std::uint32_t Place_index::first_at(const giPoint2& point) const {
    if (m_used == 0 || !is_finite(point)) return none;
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
    return first;
}

// Points of other cells that stand in the way may be near too, and then they count just as well.
std::uint32_t Place_index::first_in_cell(double cell_x, double cell_y,
                                         const giPoint2& point) const {
    const std::size_t mask = m_slots.size() - 1;
    std::uint32_t first = none;
    std::size_t at = hash_of(cell_x, cell_y) & mask;
    for (; m_slots[at].position != none; at = (at + 1) & mask) {
        const Slot& slot = m_slots[at];
        if (slot.position < first && are_one_place(slot.point, point)) first = slot.position;
    }
    return first;
}

}  // namespace nmk_search
