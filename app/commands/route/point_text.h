// point_text.h: a point of the plane as text for a person.
#pragma once

#include <geometry/giPoint2.h>

#include <string>

#include "text/number_format.h"

namespace nmk_route {

/// Decimals that are shown: finer than the smallest step of a lattice.
inline constexpr int route_decimals = 9;

/// A number of a route as text.
inline std::string route_number(double value) {
    return nmk_text::short_number(value, route_decimals);
}

/// "(3, 4.5)"
inline std::string point_text(const giPoint2& point) {
    return "(" + route_number(point.x) + ", " + route_number(point.y) + ")";
}

}  // namespace nmk_route
