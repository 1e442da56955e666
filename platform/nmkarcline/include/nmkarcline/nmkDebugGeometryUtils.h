// nmkDebugGeometryUtils.h: makes the paths that a debug channel is sent.
#pragma once

#include <geometry/giPoint3.h>
#include <nmkarcline/nmkAbsPolyArcLineVecListIter.h>

class nmkDebugGeometryUtils {
  public:
    nmkDebugGeometryUtils() = delete;

    /// A straight line from `start` to `end`.
    static nmkAbsPolyArcLineVec line_drawing(const giPoint3& start, const giPoint3& end);
};
