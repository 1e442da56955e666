// curve_points.h: points of a curve, as a table, and the formats that a curve is written in.
#pragma once

#include <geometry/giPoint3.h>
#include <ngk/ngkCurve.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/result.h"

namespace nmk_curve {

enum class OutputFormat { csv, json, archive };

/// The format of a file with this name, by its ending; empty if it is not one of them.
std::optional<OutputFormat> output_format(std::string_view file_name);

/// So many points at equal lengths along the polygon of the curve, both ends exactly included;
/// without a number the points of that polygon, for a polyline its own. An Error for a curve
/// without ends, and for one that cannot be measured.
nmk_text::Result<std::vector<giPoint3>> curve_points(const ngkCurvePtr3& curve,
                                                     std::optional<int> count, double tolerance);

/// A table with a header and a row for each point, read back as exactly these points.
std::string points_csv(const std::vector<giPoint3>& points);

}  // namespace nmk_curve
