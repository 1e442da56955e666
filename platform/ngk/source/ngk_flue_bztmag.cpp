#include <ngk/ngk_flue_bztmag.h>

#include <geometry/giVector3.h>

#include <algorithm>

namespace {

// The cosine of half the arc's angle, below which a magnitude no longer grows: at -1 it would be
// infinite. No unit.
constexpr double least_cosine = -0.5;

double magnitude(double chord, double cosine) {
    return 2.0 * chord / (1.0 + std::max(cosine, least_cosine));
}

}  // namespace

void ngk_flue_bztmag(const giPoint3& start, const giPoint3& end, const giUnitVec3& start_tangent,
                     const giUnitVec3& end_tangent, int /*method*/, double& first, double& second) {
    const giVector3 chord(start, end);
    const double length = chord.length();
    const double scale = length > 0.0 ? 1.0 / length : 0.0;
    first = magnitude(length, start_tangent.vector().dot(chord) * scale);
    second = magnitude(length, end_tangent.vector().dot(chord) * scale);
}
