#include <geometry/giUnitVec3.h>
#include <geometry/giVector3.h>

#include <algorithm>
#include <cmath>
#include <numbers>

int giVector3::parallel(const giVector3& other, const giAngle& tolerance) const noexcept {
    const giVector3 a = scaled_to_1();
    const giVector3 b = other.scaled_to_1();
    const double sine = a.cross(b).length();
    const double cosine = a.dot(b);
    if (sine == 0.0 && cosine == 0.0) return 0;
    return giAngle(giTangent2, sine, cosine) <= tolerance ? 1 : 0;
}

giAngle giVector3::apparent_angle(const giVector3& other, const giUnitVec3& normal) const noexcept {
    const giVector3 up = normal.vector();
    const giVector3 a = scaled_to_1();
    const giVector3 b = other.scaled_to_1();
    // The sum turns minus zero into zero, whose angle is not negative.
    const double sine = up.dot(a.cross(b)) + 0.0;
    const double cosine = a.dot(b) - a.dot(up) * b.dot(up);
    const giAngle angle(giTangent2, sine, cosine);
    if (!(sine < 0.0)) return angle;
    return giAngle(giRadians, angle.angle(giRadians) + 2.0 * std::numbers::pi);
}

giVector3 giVector3::scaled_to_1() const noexcept {
    const double largest = std::max({std::abs(x), std::abs(y), std::abs(z)});
    // So written that NaN is refused too.
    if (!(largest > 0.0 && largest <= gi_unset_high)) return *this;
    const int power = -std::ilogb(largest);
    return {std::scalbn(x, power), std::scalbn(y, power), std::scalbn(z, power)};
}
