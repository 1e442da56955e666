// nmkgiPoint3Set: a set of points in which points with the same coordinates are one.
//
// A balanced tree of pointers to points; the points are the caller's and outlive the set. Points
// are compared exactly, by x, then y, then z, without a tolerance. As for any tree of this kind,
// the first `top` turns the set into a list from the last point to the first; after that it can
// only be read.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/collections/nmkBalBinTree.h>
#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkgiPoint3Set : public nmkBalBinTree {
  public:
    nmkgiPoint3Set();

    /// Takes its links from `allocator`, see nmkBalBinTree::get_allocator.
    explicit nmkgiPoint3Set(fbaAllocatorcoPrf& allocator);

    /// The point of the set that equals `point`; where there is none, inserts `point` and returns
    /// it. A set that has been read by `top` reports an assertion and takes nothing in.
    const giPoint3* add(const giPoint3* point);

    /// The point of the set that equals `point`, or null.
    const giPoint3* exist(const giPoint3* point);

    /// The order of two points, given as `const giPoint3*`: -1 where `b` comes later, 1 where it
    /// comes earlier, 0 where all coordinates are equal (-0 equals 0) or both are one object. A
    /// coordinate that is NaN, on either side, gives 1.
    static int compare(const void* a, const void* b);
};
