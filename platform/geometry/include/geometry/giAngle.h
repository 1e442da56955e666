// giAngle: an angle, made and read in a stated unit.
//
// A tag in the call picks radians or degrees, so that no bare number is taken for the wrong unit.
// Nothing is reduced to one turn.
#pragma once

#include <exactmath/exact_arctangent.h>

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

    /// The angle from -pi to pi whose sine and cosine are in the ratio given; the same bits on
    /// every processor.
    giAngle(giAngleTangent2, double sine, double cosine) noexcept
        : m_radians(nmk_exact::exact_atan2(sine, cosine)) {}

    double angle(giAngleRadians) const noexcept { return m_radians; }
    double angle(giAngleDegrees) const noexcept { return m_radians / radians_in_a_degree; }

    auto operator<=>(const giAngle&) const noexcept = default;

  private:
    static constexpr double radians_in_a_degree = 3.14159265358979323846 / 180.0;

    double m_radians = 0.0;
};
