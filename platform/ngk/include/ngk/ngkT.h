// ngkT: a parameter of a curve, which is the number of a segment and a value in its range.
//
// A curve of one piece has the segment 0. A polyline has a segment for each of its lines, a
// composite curve those of its curves in their order, counted on.
#pragma once

#include <geometry/giUnset.h>

class ngkT {
  public:
    /// Unset: segment -1.
    ngkT() noexcept = default;
    ngkT(int segment_number, double value_in_segment) noexcept
        : segment(segment_number), value(value_in_segment) {}

    bool is_set() const noexcept { return segment >= 0; }

    bool operator==(const ngkT&) const noexcept = default;

    int segment = -1;
    double value = gi_unset_low;
};

/// The values of one segment, both ends included; infinite for lines without an end.
struct ngkRange {
    double low = 0.0;
    double high = 1.0;

    bool contains(double value) const noexcept { return low <= value && value <= high; }
    bool operator==(const ngkRange&) const noexcept = default;
};
