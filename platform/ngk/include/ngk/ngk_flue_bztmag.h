// ngk_flue_bztmag: how long the end tangents of a cubic Bezier curve have to be for a fair curve.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>

#pragma GCC visibility push(default)

/// The magnitudes of the derivatives at both ends, three times the distances of the inner control
/// points from the ends.
///
///   start, end, start_tangent, end_tangent  set; the tangents in the direction of travel
///   method                                  1; any other value counts as 1
///   first, second                           lengths, in the unit of the coordinates
///
/// For tangents that a circular arc of angle a has, both are 4 tan(a / 4) times its radius, so that
/// the cubic meets the arc at its middle and runs along it nearly at constant speed. With a / 2 the
/// angle between tangent and chord L that is 2 L / (1 + cos(a / 2)), which each tangent is given by
/// its own angle; below a cosine of -1/2 the magnitude no longer grows.
/// Formula: Farin, Curves and Surfaces for CAGD, 5th ed., section 12.8, with the half-angle written
/// as a cosine.
void ngk_flue_bztmag(const giPoint3& start, const giPoint3& end, const giUnitVec3& start_tangent,
                     const giUnitVec3& end_tangent, int method, double& first, double& second);

#pragma GCC visibility pop
