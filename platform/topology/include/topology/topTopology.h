// topTopology: a part of a boundary: a vertex, an edge, a loop, a face or a shell.
//
// Parts are shared through counted handles as constants. Two edges meet where they have the same
// vertex, two faces where their loops have the same edge: the same object, not an equal one.
#pragma once

#include <ncamcontainer/coPrf.h>

#pragma GCC visibility push(default)

class topTopology {
  public:
    virtual ~topTopology();

    /// Whether this and all parts below it are what their classes ask for.
    bool is_valid() const noexcept { return m_is_valid; }

  protected:
    topTopology() = default;
    topTopology(const topTopology&) = default;
    topTopology& operator=(const topTopology&) = default;

    void set_valid(bool is_valid) noexcept { m_is_valid = is_valid; }

  private:
    bool m_is_valid = false;
};

using topTopologyPtr = coPrf<const topTopology>;

#pragma GCC visibility pop
