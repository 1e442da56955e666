// travel_orientation.h: the side of a line on which a point of the plane lies, without rounding.
//
// A determinant in doubles whose sign is certain decides nearly always; otherwise its six products
// are added up as an expansion, a sum of doubles of which none overlaps another (Shewchuk,
// "Adaptive precision floating-point arithmetic and fast robust geometric predicates", Discrete and
// Computational Geometry 18, 1997). Exact as long as no product overflows or vanishes:
// plane_point() takes coordinates of less than least_coordinate as 0.
#pragma once

#include <cmath>

namespace nmk_ordering {

struct PlanePoint {
    double x = 0.0;
    double y = 0.0;

    bool operator==(const PlanePoint&) const = default;
};

/// Magnitude, in the unit of a network, whose products are far from vanishing: 2 to the power -330.
constexpr double least_coordinate = 0x1p-330;

inline PlanePoint plane_point(double x, double y) {
    return {std::fabs(x) < least_coordinate ? 0.0 : x, std::fabs(y) < least_coordinate ? 0.0 : y};
}

/// The same with the expansion alone.
int exact_orientation(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c);

/// 1 if the way from a over b to c turns left, -1 if it turns right, 0 if the three are on a line.
inline int orientation(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    constexpr double half_ulp = 0x1p-53;
    constexpr double error_of_a_determinant = (3.0 + 16.0 * half_ulp) * half_ulp;  // Shewchuk's A
    const double left = (a.x - c.x) * (b.y - c.y);
    const double right = (a.y - c.y) * (b.x - c.x);
    const double determinant = left - right;
    const double error = error_of_a_determinant * (std::fabs(left) + std::fabs(right));
    if (determinant > error) return 1;
    if (-determinant > error) return -1;
    return exact_orientation(a, b, c);
}

/// Whether a point on the line through two others is between them, ends included.
inline bool is_between(const PlanePoint& a, const PlanePoint& b, const PlanePoint& on_line) {
    const auto is_in = [](double from, double to, double value) {
        return from <= to ? from <= value && value <= to : to <= value && value <= from;
    };
    return is_in(a.x, b.x, on_line.x) && is_in(a.y, b.y, on_line.y);
}

}  // namespace nmk_ordering
