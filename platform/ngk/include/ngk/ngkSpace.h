// ngkSpace: the types of the plane and of space, so that each kind of curve is written once.
#pragma once

#include <geometry/giBox2.h>
#include <geometry/giBox3.h>
#include <geometry/giWorkplane3.h>
#include <geometry/giXform2.h>
#include <geometry/giXform3.h>
#include <ngk/Vec.h>

/// Where a circle of the plane has its centre, begins, and which way it turns.
struct ngkAxes2 {
    giPoint2 origin{0.0, 0.0};
    giVector2 x{1.0, 0.0};  // unit
    giVector2 y{0.0, 1.0};  // unit, at a right angle to x: to its left, or to its right

    bool operator==(const ngkAxes2&) const noexcept = default;
};

template <int Dimension>
struct ngkSpace;

template <>
struct ngkSpace<2> {
    using Point = giPoint2;
    using Vector = giVector2;
    using Box = giBox2;
    using Xform = giXform2;
    using Plane = ngkAxes2;
};

template <>
struct ngkSpace<3> {
    using Point = giPoint3;
    using Vector = giVector3;
    using Box = giBox3;
    using Xform = giXform3;
    using Plane = giWorkplane3;
};
