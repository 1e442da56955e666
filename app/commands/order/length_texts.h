// length_texts.h: lengths as text, in the unit of the file that is ordered.
#pragma once

#include <string>

#include "formats/job/machining_job.h"

namespace nmk_order {

/// "mm" or "in"
std::string length_unit(nmk_job::JobUnits units);

/// Takes lengths in mm. Inches have a decimal more than millimetres.
class LengthTexts {
  public:
    explicit LengthTexts(nmk_job::JobUnits units);

    /// "1.000" or "0.0394", of a tool in a column.
    std::string diameter(double length) const;

    /// "0.4 mm" or "0.0157 in", of a tool on its own.
    std::string tool(double length) const;

    /// "14520.2", or without decimals from 100,000 on.
    std::string travel(double length) const;

    /// The text of travel and the unit, "14520.2 mm".
    std::string travel_with_unit(double length) const;

  private:
    double in_unit(double length) const;

    nmk_job::JobUnits m_units;
    int m_more_decimals;  // than for millimetres
};

}  // namespace nmk_order
