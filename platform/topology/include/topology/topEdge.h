// topEdge: a curve between two vertices, which are one where the curve is closed.
#pragma once

#include <ngk/ngkCurve.h>
#include <topology/topVertex.h>

#pragma GCC visibility push(default)

class topEdge : public topTopology {
  public:
    /// Invalid where a handle is empty or what it has invalid, and where the curve does not begin
    /// and end within the tolerances of its vertices.
    topEdge(const ngkCurvePtr3& curve, const topVertexPtr& start, const topVertexPtr& end);

    const ngkCurvePtr3& curve() const noexcept { return m_curve; }
    const topVertexPtr& start() const noexcept { return m_start; }
    const topVertexPtr& end() const noexcept { return m_end; }

  private:
    ngkCurvePtr3 m_curve;
    topVertexPtr m_start;
    topVertexPtr m_end;
};

using topEdgePtr = coPrf<const topEdge>;

#pragma GCC visibility pop
