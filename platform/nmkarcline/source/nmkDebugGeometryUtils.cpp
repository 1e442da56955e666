#include <nmkarcline/nmkDebugGeometryUtils.h>

nmkAbsPolyArcLineVec nmkDebugGeometryUtils::line_drawing(const giPoint3& start,
                                                         const giPoint3& end) {
    return {{start, end}};
}
