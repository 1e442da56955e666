// max_parts: how many parts a piece is divided into at most, whatever is asked.
//
// Curves are divided until bounds decide. Where coordinates are so large, compared with the curve,
// that rounding is all that is left of it, or where a curve winds around a surface without end,
// they never would.
#pragma once

namespace nmk_ngk {

inline constexpr int max_parts = 200000;

/// Parts that are left to the pieces of one curve: each piece has some of its own, so that none is
/// left out for what others have taken, and beyond these takes from what all share.
class PartsLeft {
  public:
    PartsLeft(int own, int shared) noexcept : m_own(own), m_shared(shared) {}

    void begin_piece() noexcept { m_left_of_own = m_own; }

    /// False where none is left.
    bool take() noexcept {
        int& left = m_left_of_own > 0 ? m_left_of_own : m_shared;
        if (left <= 0) return false;
        --left;
        return true;
    }

  private:
    int m_own;
    int m_shared;
    int m_left_of_own = 0;
};

}  // namespace nmk_ngk
