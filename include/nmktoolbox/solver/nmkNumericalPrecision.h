// nmkNumericalPrecision: what a field of a given number of characters can show of a number.
//
// The order of a number is floor(log10(number)): the decimal position of its leading digit, 0 for
// units, -1 for tenths. Orders from -3 up to below the size of the field are shown in plain
// notation, all others with an exponent.
#pragma once

#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkNumericalPrecision {
  public:
    ///   digits           characters of the field. Point and sign do not count; the digit before
    ///                    the point does, and so does each character of an exponent, e and -
    ///                    included
    ///   lowest_position  the lowest decimal position that may be shown: -1 tenths, -3 thousandths
    nmkNumericalPrecision(int digits, int lowest_position);

    /// Non-zero when some number fits: the lowest position is not above the greatest order.
    int constraints_satisfiable() const;

    /// The lowest decimal position that can be shown of a number of this order.
    int least_significant_digit_position(int order) const;

    /// The greatest order that fits: four characters reach 1e99. Cut to the range of int.
    int maximum_order() const;

    /// The least order that fits and that the lowest position allows. Cut to the range of int.
    int minimum_order() const;

  private:
    int maximum_order_without_bound() const;
    int minimum_order_without_bound() const;

    int m_digits;
    int m_lowest_position;
};
