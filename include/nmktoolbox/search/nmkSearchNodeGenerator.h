// nmkSearchNodeGenerator.h: which nodes can be reached from a node in one step.
#pragma once

#include <ncamcontainer/coiIterators.h>
#include <nmktoolbox/export.h>

#include <memory>

class nmkSearchNode;

class NMKTOOLBOX_EXPORT nmkSearchNodeGenerator {
  public:
    /// Adds each neighbour of `node` to `filler`. Their order settles ties of the search.
    virtual void expand_node(const nmkSearchNode& node,
                             coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const = 0;

    /// The next coordinate after `x` on the generator's lattice; a goal that moves stays on it.
    virtual double find_x_value(double x) const = 0;

    virtual ~nmkSearchNodeGenerator() = 0;

  protected:
    nmkSearchNodeGenerator() = default;
    nmkSearchNodeGenerator(const nmkSearchNodeGenerator&) = default;
    nmkSearchNodeGenerator& operator=(const nmkSearchNodeGenerator&) = default;
};
