#include "PlaceIds.h"

#include <geometry/gi_hash_point.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace nmk_digiutils {

namespace {

// The edge length of a cell, in tolerances: a ball of one tolerance reaches two cells along an
// axis.
constexpr double cell_in_tolerances = 4.0;

// What a ball is searched for is a little larger, against rounding.
constexpr double reach_in_tolerances = 1.0001;

// Cells are made for no larger tolerance, so that all numbers are finite.
constexpr double max_tolerance = 1e306;

// From this quotient on, numbers are so far apart that only equal ones are within the tolerance.
constexpr double max_quotient = 0x1p51;

// Unknown to those who make files, so that nobody can choose places whose hashes collide.
std::uint64_t random_seed() {
    static const std::uint64_t seed = [] {
        std::random_device device;
        return std::uint64_t{device()} << 32 | device();
    }();
    return seed;
}

bool is_nan(const giPoint3& point) {
    return std::isnan(point.x) || std::isnan(point.y) || std::isnan(point.z);
}

// Points by place: numbers of items that the caller keeps, found by the hash of their point.
class PointTable {
  public:
    PointTable() : m_slots(1024) {}

    // The item at `point`, or `added` where there was none. `point_of` gives the point of an item.
    template <class PointOf>
    std::int32_t find_or_add(const giPoint3& point, std::int32_t added, const PointOf& point_of) {
        if (m_count * 2 >= m_slots.size()) grow();
        Slot& slot = find(point, point_of);
        if (slot.item >= 0) return slot.item;
        slot = {added, hash_of(point)};
        ++m_count;
        return added;
    }

    // The item at `point`, -1 where there is none.
    template <class PointOf>
    std::int32_t find_item(const giPoint3& point, const PointOf& point_of) {
        return find(point, point_of).item;
    }

  private:
    struct Slot {
        std::int32_t item = -1;
        std::uint32_t hash = 0;
    };

    std::uint32_t hash_of(const giPoint3& point) const {
        return static_cast<std::uint32_t>(gi_hash_point(point, m_seed));
    }

    template <class PointOf>
    Slot& find(const giPoint3& point, const PointOf& point_of) {
        const std::uint32_t hash = hash_of(point);
        std::size_t at = hash & (m_slots.size() - 1);
        while (m_slots[at].item >= 0 &&
               (m_slots[at].hash != hash || !(point_of(m_slots[at].item) == point))) {
            at = (at + 1) & (m_slots.size() - 1);
        }
        return m_slots[at];
    }

    void grow() {
        std::vector<Slot> larger(m_slots.size() * 2);
        for (const Slot& slot : m_slots) {
            if (slot.item < 0) continue;
            std::size_t at = slot.hash & (larger.size() - 1);
            while (larger[at].item >= 0) at = (at + 1) & (larger.size() - 1);
            larger[at] = slot;
        }
        m_slots.swap(larger);
    }

    std::uint64_t m_seed = random_seed();
    std::vector<Slot> m_slots;
    std::size_t m_count = 0;
};

// Nodes that no earlier one is near, in cells.
class CellGrid {
  public:
    CellGrid(const giBoxArrPoint3& nodes, double tolerance)
        : m_nodes(nodes),
          m_tolerance(tolerance),
          m_cell(std::min(tolerance, max_tolerance) * cell_in_tolerances),
          m_reach(std::min(tolerance, max_tolerance) * reach_in_tolerances) {}

    // The first node in the grid within the tolerance of `node`, which is added where there is
    // none.
    std::int32_t find_or_add(std::int32_t node) {
        const giPoint3& point = m_nodes[node];
        const std::int32_t found = find_near(point);
        if (found >= 0) return found;
        add(node, {cell_of(point.x), cell_of(point.y), cell_of(point.z)});
        return node;
    }

  private:
    struct Entry {
        giPoint3 cell;
        std::int32_t node;
        std::int32_t next;  // of the same cell, -1 at the end
    };

    auto cell_of_entry() const {
        return [this](std::int32_t entry) -> const giPoint3& {
            return m_entries[static_cast<std::size_t>(entry)].cell;
        };
    }

    double cell_of(double coordinate) const {
        const double quotient = coordinate / m_cell;
        return std::fabs(quotient) < max_quotient ? std::floor(quotient) : coordinate;
    }

    // The cells along an axis that a ball reaches: one, twice, or two.
    std::array<double, 2> reached(double coordinate) const {
        return {cell_of(coordinate - m_reach), cell_of(coordinate + m_reach)};
    }

    std::int32_t find_near(const giPoint3& point) {
        const auto x = reached(point.x);
        const auto y = reached(point.y);
        const auto z = reached(point.z);
        std::int32_t nearest = -1;
        for (unsigned corner = 0; corner < 8; ++corner) {
            const unsigned i = corner & 1;
            const unsigned j = corner >> 1 & 1;
            const unsigned k = corner >> 2;
            const bool is_seen =
                (i == 1 && x[0] == x[1]) || (j == 1 && y[0] == y[1]) || (k == 1 && z[0] == z[1]);
            if (!is_seen) nearest = first_of(nearest, find_in({x[i], y[j], z[k]}, point));
        }
        return nearest;
    }

    static std::int32_t first_of(std::int32_t a, std::int32_t b) {
        return a < 0 || b < 0 ? std::max(a, b) : std::min(a, b);
    }

    std::int32_t find_in(const giPoint3& cell, const giPoint3& point) {
        std::int32_t nearest = -1;
        for (std::int32_t entry = m_heads.find_item(cell, cell_of_entry()); entry >= 0;
             entry = m_entries[static_cast<std::size_t>(entry)].next) {
            const std::int32_t node = m_entries[static_cast<std::size_t>(entry)].node;
            if (m_nodes[node].coincident(point, m_tolerance) != 0) {
                nearest = first_of(nearest, node);
            }
        }
        return nearest;
    }

    void add(std::int32_t node, const giPoint3& cell) {
        const auto entry = static_cast<std::int32_t>(m_entries.size());
        m_entries.push_back({cell, node, -1});
        const std::int32_t head = m_heads.find_or_add(cell, entry, cell_of_entry());
        if (head == entry) return;
        Entry& first = m_entries[static_cast<std::size_t>(head)];
        m_entries.back().next = first.next;
        first.next = entry;
    }

    const giBoxArrPoint3& m_nodes;
    double m_tolerance;
    double m_cell;
    double m_reach;
    std::vector<Entry> m_entries;
    PointTable m_heads;  // the first entry of each cell
};

}  // namespace

std::vector<std::int32_t> place_ids(const giBoxArrPoint3& nodes, double tolerance) {
    const std::int32_t count = nodes.size();
    std::vector<std::int32_t> ids(static_cast<std::size_t>(count), -1);
    PointTable places;
    CellGrid grid(nodes, tolerance);
    const bool has_tolerance = tolerance > 0.0;
    const auto point_of = [&](std::int32_t node) -> const giPoint3& { return nodes[node]; };
    for (std::int32_t node = 0; node < count; ++node) {
        if (is_nan(nodes[node])) continue;
        const std::int32_t same = places.find_or_add(nodes[node], node, point_of);
        std::int32_t id = same;
        if (same != node) id = ids[static_cast<std::size_t>(same)];
        if (same == node && has_tolerance) id = grid.find_or_add(node);
        ids[static_cast<std::size_t>(node)] = id;
    }
    return ids;
}

}  // namespace nmk_digiutils
