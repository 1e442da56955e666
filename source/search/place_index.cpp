#include "search/place_index.h"

#include <bit>
#include <utility>

namespace nmk_search {

std::uint32_t Place_index::hash_of(double cell_x, double cell_y) {
    std::uint64_t mixed = std::bit_cast<std::uint64_t>(cell_x) * 0x9e3779b97f4a7c15u;
    mixed = std::rotl(mixed, 29) ^ std::bit_cast<std::uint64_t>(cell_y);
    mixed ^= mixed >> 32;
    mixed *= 0xd6e8feb86659fd93u;
    mixed ^= mixed >> 32;
    return static_cast<std::uint32_t>(mixed);
}

void Place_index::add(const giPoint2& point, std::uint32_t position) {
    if (!is_finite(point)) return;
    if (2 * (m_used + 1) > m_slots.size()) grow();
    put({hash_of(cell_of(point.x), cell_of(point.y)), position});
    ++m_used;
}

void Place_index::put(Slot slot) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = slot.hash & mask;
    while (m_slots[at].position != none) at = (at + 1) & mask;
    m_slots[at] = slot;
}

void Place_index::grow() {
    constexpr std::size_t fewest_slots = 64;
    std::vector<Slot> slots(m_slots.empty() ? fewest_slots : 2 * m_slots.size());
    m_slots.swap(slots);
    for (const Slot& slot : slots) {
        if (slot.position != none) put(slot);
    }
}

}  // namespace nmk_search
