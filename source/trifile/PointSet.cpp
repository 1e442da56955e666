#include "PointSet.h"

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

// How many records ahead of the one that is moved are asked for when the table grows.
constexpr std::size_t records_ahead = 16;

}  // namespace

PointSet::PointSet() : m_seed(random_seed()), m_slots(slots_at_first) {}

void PointSet::grow() {
    std::vector<Slot> smaller(m_slots.size() + m_slots.size() / 2);
    m_slots.swap(smaller);
    for (std::size_t i = 0; i < smaller.size(); ++i) {
        if (i + records_ahead < smaller.size()) __builtin_prefetch(smaller[i + records_ahead]);
        const Slot slot = smaller[i];
        if (slot == nullptr) continue;
        std::size_t at = first_slot(hash_of(*record_in(slot)));
        while (m_slots[at] != nullptr) at = next_slot(at);
        m_slots[at] = slot;
    }
}

}  // namespace nmk_trifile
