#include "search/point_index.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "search/plane_nodes.h"

namespace nmk_search {

namespace {

// Grid cells are wide beside the tolerance, so that most circles touch one. Rounding to the nearest
// puts the points of common lattices in the middle of their grid cells.
constexpr double cells_per_unit = 1e4;

// A rounded distance may be a little short.
constexpr double reach = 2.0 * node_tolerance;

constexpr std::size_t min_chains = 64;

bool is_finite(const giPoint2& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

double cell_of(double coordinate) { return std::floor(coordinate * cells_per_unit + 0.5); }

/// The numbers of the grid cells in which the neighbours of a coordinate can lie.
struct Cells {
    double first;
    double last;
};

Cells cells_near(double coordinate) {
    return {cell_of(coordinate - reach), cell_of(coordinate + reach)};
}

}  // namespace

void PointIndex::add(const giPoint2& point, std::uint32_t position) {
    if (!is_finite(point)) return;
    m_entries.push_back({point, position, none});
    if (m_entries.size() > m_chains.size()) return grow();
    link(static_cast<std::uint32_t>(m_entries.size() - 1));
}

bool PointIndex::contains(const giPoint2& point) const {
    bool is_found = false;
    visit_near(point, [&](const Entry&) { return is_found = true; });
    return is_found;
}

std::uint32_t PointIndex::first_at(const giPoint2& point) const {
    std::uint32_t first = none;
    visit_near(point, [&](const Entry& entry) {
        first = std::min(first, entry.position);
        return false;
    });
    return first;
}

std::size_t PointIndex::chain_of(double cell_x, double cell_y) const {
    std::uint64_t mixed = std::bit_cast<std::uint64_t>(cell_x) * 0x9e3779b97f4a7c15u;
    mixed = (mixed ^ (mixed >> 32) ^ std::bit_cast<std::uint64_t>(cell_y)) * 0xd6e8feb86659fd93u;
    mixed = (mixed ^ (mixed >> 32)) * 0x9e3779b97f4a7c15u;
    return (mixed ^ (mixed >> 29)) & (m_chains.size() - 1);
}

void PointIndex::link(std::uint32_t number) {
    Entry& entry = m_entries[number];
    std::uint32_t& last = m_chains[chain_of(cell_of(entry.point.x), cell_of(entry.point.y))];
    entry.next = last;
    last = number;
}

void PointIndex::grow() {
    m_chains.assign(std::max(min_chains, 2 * m_chains.size()), none);
    for (std::uint32_t number = 0; number < m_entries.size(); ++number) link(number);
}

// Calls `visit` with the points within the tolerance of `point`, until it returns true.
template <class Visit>
void PointIndex::visit_near(const giPoint2& point, const Visit& visit) const {
    if (m_chains.empty() || !is_finite(point)) return;
    const Cells x = cells_near(point.x);
    const Cells y = cells_near(point.y);
    // Where adding 1 no longer changes the number of a cell, first and last are the same.
    for (double cell_x = x.first;; cell_x += 1.0) {
        for (double cell_y = y.first;; cell_y += 1.0) {
            if (visit_chain(chain_of(cell_x, cell_y), point, visit)) return;
            if (!(cell_y < y.last)) break;
        }
        if (!(cell_x < x.last)) break;
    }
}

template <class Visit>
bool PointIndex::visit_chain(std::size_t chain, const giPoint2& point, const Visit& visit) const {
    for (std::uint32_t number = m_chains[chain]; number != none; number = m_entries[number].next) {
        const Entry& entry = m_entries[number];
        if (points_coincide(entry.point, point) && visit(entry)) return true;
    }
    return false;
}

}  // namespace nmk_search
