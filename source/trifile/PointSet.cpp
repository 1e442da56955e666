#include "PointSet.h"

#include <geometry/gi_hash_point.h>

#include <cmath>
#include <random>

namespace nmk_trifile {

namespace {

constexpr std::size_t slots_at_first = 1024;

// Unknown to those who make files, so that nobody can choose places whose hashes collide. The
// results do not depend on it.
std::uint64_t random_seed() {
    static const std::uint64_t seed = [] {
        std::random_device device;
        return std::uint64_t{device()} << 32 | device();
    }();
    return seed;
}

bool has_nan(const giPoint3& point) {
    return std::isnan(point.x) || std::isnan(point.y) || std::isnan(point.z);
}

}  // namespace

PointSet::PointSet() : m_seed(random_seed()), m_slots(slots_at_first) {}

NodeRecord* PointSet::add(NodeRecord* record) {
    if (has_nan(record->place)) return record;
    const std::uint64_t hash = gi_hash_point(record->place, m_seed);
    std::size_t at = hash & (m_slots.size() - 1);
    for (; m_slots[at].record != nullptr; at = (at + 1) & (m_slots.size() - 1)) {
        const Slot& slot = m_slots[at];
        if (slot.hash == hash && slot.record->place == record->place) return slot.record;
    }
    m_slots[at] = {record, hash};
    if (++m_count * 2 > m_slots.size()) grow();
    return record;
}

void PointSet::grow() {
    std::vector<Slot> larger(m_slots.size() * 2);
    for (const Slot& slot : m_slots) {
        if (slot.record == nullptr) continue;
        std::size_t at = slot.hash & (larger.size() - 1);
        while (larger[at].record != nullptr) at = (at + 1) & (larger.size() - 1);
        larger[at] = slot;
    }
    m_slots.swap(larger);
}

}  // namespace nmk_trifile
