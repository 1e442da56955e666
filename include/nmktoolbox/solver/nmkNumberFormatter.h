// nmkNumberFormatter: a number as text in a field of a given number of characters.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/solver/nmkNumberRounder.h>
#include <nmktoolbox/solver/nmkNumericalPrecision.h>
#include <utils/utString.h>

/// A value: copies are independent. The rounder of each points at its own precision.
class NMKTOOLBOX_EXPORT nmkNumberFormatter {
  public:
    /// As for nmkNumericalPrecision.
    nmkNumberFormatter(int digits, int lowest_position);
    nmkNumberFormatter(const nmkNumberFormatter& other);
    nmkNumberFormatter& operator=(const nmkNumberFormatter& other);
    ~nmkNumberFormatter() = default;

    /// The number as text: plain from thousandths up to the size of the field, else as 1.2e-5.
    ///
    /// Zeros at the end of a fraction are left out. "0" without a sign for 0, for what is rounded
    /// to 0, and where the field cannot show any number. "nan" for NaN. Infinity is shown as the
    /// greatest number of the field, or from five characters on as "inf" and "-inf". The same in
    /// every locale.
    utString format(double value) const;

  private:
    utString in_plain_notation(double rounded, int order) const;
    utString with_exponent(double rounded, int order) const;

    int m_digits;
    nmkNumericalPrecision m_precision;
    nmkNumberRounder m_rounder;
};
