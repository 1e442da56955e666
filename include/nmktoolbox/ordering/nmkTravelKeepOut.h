// nmkTravelKeepOut: a part of the XY plane that no travel may cross, such as a clamp.
//
// It is the inside of one or more simple polygons, for all z. The inside is open: a leg may touch
// the edges and corners and run along them. So two keep-outs that only touch leave a gap of no
// width through which a leg may pass; a clearance closes it.
//
// A circle, and the rounded corners of a clearance, are polygons around the true shape: a leg that
// keeps out of the polygon keeps out of the shape. Their corners come from sums, quotients and
// square roots only, so that they are the same on every machine.
#pragma once

#include <geometry/giPoint2.h>
#include <nmktoolbox/export.h>

#include <vector>

struct NMKTOOLBOX_EXPORT nmkTravelKeepOut {
    /// The corners of all keep-outs of a problem together.
    static constexpr int max_corners = 20000;
    /// The corners of a circle.
    static constexpr int max_circle_corners = 1024;

    /// Simple polygons in either direction, which may overlap.
    std::vector<std::vector<giPoint2>> parts;

    /// The circle of `radius` + `clearance` around `centre`.
    ///
    ///   chord_error  by how much the corners may be farther from the centre than the circle is;
    ///                where more than max_circle_corners would be needed, they are farther
    ///
    /// A radius or clearance that is negative, a sum or chord error that is not above 0, and
    /// numbers that are not finite give a part without corners, which is a bad problem.
    static nmkTravelKeepOut circle(const giPoint2& centre, double radius, double clearance,
                                   double chord_error);

    /// The rectangle between two opposite corners, wider by `clearance` on each side with rounded
    /// corners. Bad numbers as of a circle.
    static nmkTravelKeepOut rectangle(const giPoint2& corner, const giPoint2& opposite,
                                      double clearance, double chord_error);

    /// All places inside a simple polygon and those nearer to it than `clearance`. A convex polygon
    /// is one part; any other with a clearance has one for each edge beside its inside. Bad numbers
    /// as of a circle.
    static nmkTravelKeepOut polygon(const std::vector<giPoint2>& corners, double clearance,
                                    double chord_error);
};
