// facts_text.h: what is known of curves as text and as JSON.
#pragma once

#include <ngk/ngkCurve.h>

#include <string>
#include <vector>

#include "commands/curve/curve_facts.h"

namespace nmk_curve {

/// Curves that a command reports together.
struct CurveReport {
    std::string name;  // of the file, or of the shape that was made
    std::vector<CurveFacts> curves;
    std::vector<std::string> origins;  // of each curve in its file; may be empty texts
    std::vector<std::string> notes;
    std::vector<giPoint3> samples;  // of the only curve
};

/// Coordinates in mm with at most six decimals: "12.5 0 3".
std::string place_text(const giPoint3& point);
std::string length_text(double length);

/// A list for one curve, a table for several.
std::string report_text(const CurveReport& report);

std::string report_json(const CurveReport& report);

}  // namespace nmk_curve
