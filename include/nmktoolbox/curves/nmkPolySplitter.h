// nmkPolySplitter: a run of points, cut into pieces that share their end points.
#pragma once

#include <nmktoolbox/export.h>

#include <cstdint>

class NMKTOOLBOX_EXPORT nmkPolySplitter {
  public:
    /// Pieces of `piece` points each, the last of which may have fewer, out of `count` points. A
    /// count below 0 counts as 0, a piece below 1 as 1.
    nmkPolySplitter(int count, int piece) noexcept { reset(count, piece); }

    /// Begins anew, as if just made.
    void reset(int count, int piece) noexcept;

    /// The next piece.
    ///
    ///   first, last  receive the indices of its end points, counted from 0; left as they are when
    ///                there is no piece. Without points, the first call sets them to 0 and -1
    ///   returns      its number of points, at least 2; 0 when there is none, and always for pieces
    ///                of 1 point, which do not get on
    int next(int& first, int& last) noexcept;

    /// How many pieces there are in all; 0 for pieces of 1 point.
    int num_seg() const noexcept;

  private:
    std::int32_t m_last;      // index of the last point
    std::int32_t m_position;  // index of the first point of the next piece
    std::int32_t m_step;      // indices in a piece, less one
};
