// PointSet.h: the set behind nmkNodeUnduplicator.
//
// The same operation as the ordered set nmkgiPoint3Set, with a hash behind it: open addressing with
// linear probing, at most three quarters of the slots in use. A slot is a pointer of 8 bytes, and
// the table grows by half of its size, so that 11 to 16 bytes a node come on top of the records,
// and at most 27 while the table grows.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/gi_hash_point.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nmk_trifile {

/// A node: its place, then its index. The set reads the place alone.
struct NodeRecord {
    giPoint3 place;
    std::int64_t index;
};

static_assert(sizeof(NodeRecord) == 32, "records of a pool");

class PointSet {
  public:
    PointSet();

    /// The record of the set at the place of `record`; where there is none, takes `record` in and
    /// returns it. A record with a coordinate that is NaN is returned without being taken in, since
    /// nothing can be equal to it.
    NodeRecord* add(NodeRecord* record);

  private:
    // A pointer into a record, as many bytes behind its beginning as the record's tag says; null in
    // a free slot. The tag, some bits of the hash, shows in the low bits of the address, so that
    // most records at other places are passed without being read.
    using Slot = std::byte*;

    // As many as addresses of records leave free by their alignment.
    static constexpr std::uintptr_t tag_count = alignof(NodeRecord);

    struct Recent {
        std::uint64_t hash = 0;
        NodeRecord* record = nullptr;
    };

    static std::uintptr_t tag_of(std::uint64_t hash) noexcept { return hash % tag_count; }

    static NodeRecord* record_in(Slot slot) noexcept {
        return reinterpret_cast<NodeRecord*>(slot - tag_of(reinterpret_cast<std::uintptr_t>(slot)));
    }

    static bool has_nan(const giPoint3& point) noexcept {
        return std::isnan(point.x) || std::isnan(point.y) || std::isnan(point.z);
    }

    std::uint64_t hash_of(const NodeRecord& record) const noexcept {
        return gi_hash_point(record.place, m_seed);
    }

    // The hash as a part of its range, taken of the number of slots.
    std::size_t first_slot(std::uint64_t hash) const noexcept {
        __extension__ using Product = unsigned __int128;
        return static_cast<std::size_t>(static_cast<Product>(hash) * m_slots.size() >> 64);
    }

    std::size_t next_slot(std::size_t slot) const noexcept {
        return slot + 1 < m_slots.size() ? slot + 1 : 0;
    }

    NodeRecord* find_or_add(NodeRecord* record, std::uint64_t hash);
    void grow();

    std::uint64_t m_seed;
    std::vector<Slot> m_slots;
    std::array<Recent, 32> m_recent{};  // by hash: triangles beside each other come together
    std::size_t m_count = 0;
};

inline NodeRecord* PointSet::add(NodeRecord* record) {
    const std::uint64_t hash = hash_of(*record);
    Recent& recent = m_recent[hash % m_recent.size()];
    if (recent.hash == hash && recent.record != nullptr && recent.record->place == record->place) {
        return recent.record;
    }
    NodeRecord* const known = find_or_add(record, hash);
    if (known != record || !has_nan(record->place)) recent = {hash, known};
    return known;
}

inline NodeRecord* PointSet::find_or_add(NodeRecord* record, std::uint64_t hash) {
    const std::uintptr_t tag = tag_of(hash);
    std::size_t at = first_slot(hash);
    for (; m_slots[at] != nullptr; at = next_slot(at)) {
        if (tag_of(reinterpret_cast<std::uintptr_t>(m_slots[at])) != tag) continue;
        NodeRecord* const known = record_in(m_slots[at]);
        if (known->place == record->place) return known;
    }
    if (has_nan(record->place)) return record;
    m_slots[at] = reinterpret_cast<std::byte*>(record) + tag;
    if (++m_count * 4 > m_slots.size() * 3) grow();
    return record;
}

}  // namespace nmk_trifile
