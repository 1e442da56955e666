// nmkAnnealItemTP: a toolpath, reduced to its two ends for the ordering.
//
// A toolpath may be run in several states (forwards and backwards, for example), each with its own
// ends.
#pragma once

#include <geometry/giPoint3.h>
#include <ncamcontainer/coPageArr.h>
#include <ncamcontainer/coPrf.h>
#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkAnnealItemTP {
  public:
    nmkAnnealItemTP();
    nmkAnnealItemTP(const nmkAnnealItemTP&) = default;
    nmkAnnealItemTP& operator=(const nmkAnnealItemTP&) = default;

    /// Where the toolpath starts when it is run in `state`.
    virtual giPoint3 start_point(int state) const = 0;

    /// Where the toolpath ends when it is run in `state`.
    virtual giPoint3 end_point(int state) const = 0;

    virtual ~nmkAnnealItemTP();
};

using nmkAnnealItemTPcoPageArrPrfINTERNAL = nmkAnnealItemTP;

/// A shared reference to a toolpath, and the array of them that an ordering is built on.
using nmkAnnealItemTPcoPageArrPrfINTERNALcoPrf = coPrf<nmkAnnealItemTPcoPageArrPrfINTERNAL>;
using nmkAnnealItemTPcoPageArrPrfINTERNALcoPrfcoPageArr =
    coPageArr<nmkAnnealItemTPcoPageArrPrfINTERNALcoPrf>;
