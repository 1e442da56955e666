// nmkNumberRounder: the number nearest to a given one among those that a field can show.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/solver/nmkNumericalPrecision.h>

class NMKTOOLBOX_EXPORT nmkNumberRounder {
  public:
    /// `precision` is borrowed and must outlive the rounder.
    explicit nmkNumberRounder(const nmkNumericalPrecision& precision);

    /// `value`, which must not be negative, rounded to what the field can show.
    ///
    /// The greatest number of the field for all beyond it, infinity included; from five characters
    /// on that is infinity itself. Below the least number of the field: the least number from above
    /// its half, else 0. A half of the last position is rounded down. 0 when the field cannot show
    /// any number. NaN for NaN.
    double round(double value) const;

  private:
    double maximum_positive_admissible_value() const;
    double minimum_positive_admissible_value() const;
    int no_positive_admissible_value() const;

    const nmkNumericalPrecision* m_precision;
};
