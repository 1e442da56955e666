// topVertex: a point in which edges end.
#pragma once

#include <geometry/giPoint3.h>
#include <topology/topTopology.h>

#pragma GCC visibility push(default)

class topVertex : public topTopology {
  public:
    /// `tolerance`: how far from the point the curves of its edges may end, at least 0. Invalid
    /// where the point is unset, not finite or beyond 1e100.
    topVertex(const giPoint3& point, double tolerance);

    const giPoint3& point() const noexcept { return m_point; }
    double tolerance() const noexcept { return m_tolerance; }

  private:
    giPoint3 m_point;
    double m_tolerance;
};

using topVertexPtr = coPrf<const topVertex>;

#pragma GCC visibility pop
