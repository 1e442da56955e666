// slfINodeUnduplicator: finds the nodes that triangle corners share.
#pragma once

#include <geometry/giPoint3.h>
#include <ncamcontainer/coPrf.h>

#pragma GCC visibility push(default)

class slfINodeUnduplicator {
  public:
    /// Forgets all nodes.
    virtual void clear() = 0;

    /// The index of the node at `point`; `index` itself where there is none yet, which then gets
    /// that index.
    virtual long long node_index(const giPoint3& point, long long index) = 0;

    virtual ~slfINodeUnduplicator();

  protected:
    slfINodeUnduplicator() = default;
    slfINodeUnduplicator(const slfINodeUnduplicator&) = default;
    slfINodeUnduplicator& operator=(const slfINodeUnduplicator&) = default;
};

#pragma GCC visibility pop

using slfINodeUnduplicatorcoPrf = coPrf<slfINodeUnduplicator>;
