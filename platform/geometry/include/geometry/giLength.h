// giLength: a length that is not negative.
//
// Many lengths are only compared with others, or asked for once in a while, and the square root is
// the dear part. So a length may be held as its negated square and is turned into a plain one when
// it is read. No user ever sees the negated square: everything public speaks of the length.
#pragma once

#include <cmath>

class giLength {
  public:
    giLength() = default;

    /// A length that is already known, at least 0. Held as it is: reading it costs no root.
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

    /// The square of the length; no root is taken for one that is held as its square.
    double square() const noexcept { return m_held < 0.0 ? -m_held : m_held * m_held; }

  private:
    double m_held = 0.0;  // the length, or below 0 its negated square
};
