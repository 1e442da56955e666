// ngkCurvePoint3, ngkCurvePoint2: a point of a curve, its parameter, and how far it is from the
// point for which it was found.
#pragma once

#include <ngk/ngkSpace.h>
#include <ngk/ngkT.h>

template <int Dimension>
struct ngkCurvePoint {
    typename ngkSpace<Dimension>::Point point;  // unset where nothing was found
    ngkT t;
    double distance = gi_unset_high;

    bool is_set() const noexcept { return t.is_set(); }
};

using ngkCurvePoint2 = ngkCurvePoint<2>;
using ngkCurvePoint3 = ngkCurvePoint<3>;
