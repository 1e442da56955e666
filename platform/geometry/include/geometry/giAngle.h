// giAngle: an angle, made and read in a stated unit.
//
// The unit stands in the call: a tag picks radians or degrees, so that no bare number can be taken
// for the wrong one. Nothing is reduced to one turn.
#pragma once

#include <cmath>
#include <compare>

enum giAngleRadians { giRadians = 0 };
enum giAngleDegrees { giDegrees = 0 };

/// Makes an angle from a sine and a cosine, in that order.
enum giAngleTangent2 { giTangent2 = 0 };

class giAngle {
  public:
    giAngle() = default;
    giAngle(giAngleRadians, double radians) noexcept : m_radians(radians) {}
    giAngle(giAngleDegrees, double degrees) noexcept : m_radians(degrees * radians_in_a_degree) {}

    /// The angle from -pi to pi whose sine and cosine stand in the ratio given.
    giAngle(giAngleTangent2, double sine, double cosine) noexcept
        : m_radians(std::atan2(sine, cosine)) {}

    double angle(giAngleRadians) const noexcept { return m_radians; }
    double angle(giAngleDegrees) const noexcept { return m_radians / radians_in_a_degree; }

    auto operator<=>(const giAngle&) const noexcept = default;

  private:
    static constexpr double radians_in_a_degree = 3.14159265358979323846 / 180.0;

    double m_radians = 0.0;
};
