// topFace: the part of a surface that loops bound, the whole of it without loops.
#pragma once

#include <ngk/ngkSurf.h>
#include <topology/topLoop.h>

#pragma GCC visibility push(default)

class topFace : public topTopology {
  public:
    /// `is_reversed`: its normal is opposite to the surface's, which is the derivative by u times
    /// that by v. Seen against its normal the face is to the left of its loops. Invalid where a
    /// handle is empty or what it has invalid; whether the loops are on the surface is not checked.
    topFace(const ngkSurfPtr& surface, bool is_reversed, std::vector<topLoopPtr> loops);

    const ngkSurfPtr& surface() const noexcept { return m_surface; }
    bool is_reversed() const noexcept { return m_is_reversed; }
    const std::vector<topLoopPtr>& loops() const noexcept { return m_loops; }

  private:
    ngkSurfPtr m_surface;
    bool m_is_reversed;
    std::vector<topLoopPtr> m_loops;
};

using topFacePtr = coPrf<const topFace>;

#pragma GCC visibility pop
