// giLength: a length that is not negative.
//
// The square root is the expensive part of a length. So a length may be stored as its negated
// square, and the root is taken when it is read. The negated square is never visible: every public
// operation takes or returns the length.
#pragma once

#include <cmath>

class giLength {
  public:
    giLength() = default;

    /// A length that is already known. Stored as it is: reading it costs no root.
    giLength(double length) noexcept : m_held(length < 0.0 ? -length : length) {}

    /// The length whose square is `square` (at least 0). The root is taken when it is read.
    static giLength from_square(double square) noexcept {
        giLength length;
        length.m_held = 0.0 - square;
        return length;
    }

    /// The length as a number.
    double length() const noexcept { return m_held < 0.0 ? std::sqrt(-m_held) : m_held; }
    operator double() const noexcept { return length(); }

    /// The square of the length; no root is taken for one that is stored as its square.
    double square() const noexcept { return m_held < 0.0 ? -m_held : m_held * m_held; }

  private:
    double m_held = 0.0;  // the length, or below 0 its negated square
};
