// PointSet.h: the set behind nmkNodeUnduplicator.
//
// The same operation as the ordered set nmkgiPoint3Set, with a hash behind it: open addressing in a
// power of two of slots, at most half of them in use.
#pragma once

#include <geometry/giPoint3.h>

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
    struct Slot {
        NodeRecord* record = nullptr;
        std::uint64_t hash = 0;
    };

    void grow();

    std::uint64_t m_seed;
    std::vector<Slot> m_slots;
    std::size_t m_count = 0;
};

}  // namespace nmk_trifile
