// topLoop: edges that follow each other around and end where they began.
#pragma once

#include <topology/topEdge.h>

#include <vector>

#pragma GCC visibility push(default)

/// An edge as a loop runs through it.
struct topEdgeUse {
    topEdgePtr edge;
    bool is_reversed = false;  // from its end to its start

    const topVertexPtr& start() const noexcept { return is_reversed ? edge->end() : edge->start(); }
    const topVertexPtr& end() const noexcept { return is_reversed ? edge->start() : edge->end(); }
};

class topLoop : public topTopology {
  public:
    /// Invalid without edges, with an empty handle or an invalid edge, and where an edge does not
    /// start with the vertex with which the one before it ends.
    explicit topLoop(std::vector<topEdgeUse> uses);

    const std::vector<topEdgeUse>& uses() const noexcept { return m_uses; }

  private:
    std::vector<topEdgeUse> m_uses;
};

using topLoopPtr = coPrf<const topLoop>;

#pragma GCC visibility pop
