// nmkRange: an interval of numbers whose ends may belong to it or not.
//
// An end that does not belong to the range is moved inward by 1e-10: that is its effective end. A
// range whose low end is the largest finite double is undefined. NaN compares as neither below nor
// above any end.
#pragma once

#include <ncamcontainer/coPageArr.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

class NMKTOOLBOX_EXPORT nmkRange {
  public:
    /// The undefined range.
    nmkRange();

    /// Both ends belong to the range.
    nmkRange(double lo, double hi);

    /// Non-zero flags: the end belongs to the range.
    nmkRange(double lo, double hi, int lo_inclusive, int hi_inclusive);
    nmkRange(const nmkRange&) = default;
    nmkRange& operator=(const nmkRange&) = default;
    virtual ~nmkRange();

    /// Sets whether the ends belong to the range.
    void allow_equality(int lo_inclusive, int hi_inclusive);

    /// 1 when `value` is neither below the effective low end nor above the effective high end.
    int contains(double value) const;

    /// Moves `value` to the effective end beyond which it lies. Returns -1 when it was too low, 1
    /// when it was too high, 0 when it was not moved.
    int clamp(double& value) const;

    /// 1 when the ranges have a number in common. Equal ranges do so when they are not empty;
    /// ranges that only touch do so when one of them includes that end.
    int overlaps(const nmkRange& other) const;

    /// The range as a condition on x: 1 <= x <= 2, or x < 5. Empty when undefined, without
    /// limits or with a low end above the high end.
    ///
    /// One text for the whole process, which the next call overwrites; from one thread at a time.
    const utString& get_range_string() const;

  private:
    double effective_low() const;
    double effective_high() const;
    bool holds(double value) const;

    double m_lo;
    double m_hi;
    int m_lo_inclusive;
    int m_hi_inclusive;
};

using nmkRangecoPageArr = coPageArr<nmkRange>;
