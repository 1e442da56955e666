// nmkNodeUnduplicator: shared nodes out of a stream of triangle corners.
//
// Corners at exactly the same place, coordinate by coordinate, are one node; there is no tolerance,
// and 0 and -0 are equal. The caller proposes the indices, and the first proposal for a place is
// kept. A coordinate that is NaN equals nothing, so that such a corner is always a new node.
//
// A corner costs one look-up, a new node also one record of a pool. For one thread at a time.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/export.h>
#include <stlfile/slfINodeUnduplicator.h>

#include <cstdint>

class fbaAllocator;

namespace nmk_trifile {
class PointSet;
struct NodeRecord;
}  // namespace nmk_trifile

class NMKTOOLBOX_EXPORT nmkNodeUnduplicator : public slfINodeUnduplicator {
  public:
    /// Allocates nothing before the first query.
    nmkNodeUnduplicator() noexcept;
    nmkNodeUnduplicator(const nmkNodeUnduplicator&) = delete;
    nmkNodeUnduplicator& operator=(const nmkNodeUnduplicator&) = delete;

    /// Forgets all nodes and frees their memory.
    void clear() override;

    /// The index under which this exact point is known; `index` itself where it is new.
    long long node_index(const giPoint3& point, long long index) override;

    ~nmkNodeUnduplicator() override;

  private:
    void free_all() noexcept;

    nmk_trifile::PointSet* m_set;      // owned
    fbaAllocator* m_allocator;         // owned; makes the records
    std::int32_t m_is_ready;           // 0 until clear has first run
    nmk_trifile::NodeRecord* m_spare;  // filled in for each query; of m_allocator
};
