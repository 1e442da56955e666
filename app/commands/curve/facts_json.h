// facts_json.h: points and curves as JSON.
#pragma once

#include <nlohmann/json.hpp>

#include "commands/curve/curve_facts.h"
#include "text/json_document.h"

namespace nmk_curve {

/// `[x, y, z]`; null for an unset one.
nmk_text::Json json_of(const giPoint3& point);
nmk_text::Json json_of(const giUnitVec3& direction);

nmk_text::Json json_of(const std::vector<giPoint3>& points);

nmk_text::Json json_of(const CurveFacts& facts);

}  // namespace nmk_curve
