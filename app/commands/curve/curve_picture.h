// curve_picture.h: draws curves with their ends, tangents, control points and centres.
#pragma once

#include <geometry/giPoint3.h>
#include <ngk/ngkCurve.h>

#include <optional>
#include <string>
#include <vector>

#include "commands/curve/curve_facts.h"

namespace nmk_curve {

/// A line between two points that a command found: the nearest point, or where curves differ.
struct FoundPlace {
    giPoint3 from, to;
    std::string words;
};

struct CurveScene {
    std::string title, subtitle;
    std::vector<ngkCurvePtr3> curves;
    std::vector<CurveFacts> facts;   // of each
    std::vector<std::string> names;  // of each, for the legend; empty: the curves are alike
    std::vector<giPoint3> samples;
    std::optional<FoundPlace> found;
};

std::string curve_picture(const CurveScene& scene);

}  // namespace nmk_curve
