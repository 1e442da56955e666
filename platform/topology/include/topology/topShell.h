// topShell: faces that meet in common edges.
#pragma once

#include <topology/topFace.h>

#pragma GCC visibility push(default)

class topShell : public topTopology {
  public:
    /// Invalid without faces, with an empty handle or an invalid face, and where an edge is used
    /// more than once in the same direction.
    explicit topShell(std::vector<topFacePtr> faces);

    const std::vector<topFacePtr>& faces() const noexcept { return m_faces; }

    /// Whether each edge of a valid shell is used in both directions, so that no face ends freely.
    bool is_closed() const noexcept { return m_is_closed; }

  private:
    std::vector<topFacePtr> m_faces;
    bool m_is_closed = false;
};

using topShellPtr = coPrf<const topShell>;

#pragma GCC visibility pop
