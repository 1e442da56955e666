// figures_text.h: the figures of models as text and as JSON.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "commands/model/model_figures.h"

namespace nmk_model {

/// Names and values of the figures of one model, for a person.
std::vector<std::pair<std::string, std::string>> figure_lines(const ModelFigures& figures);

/// The same as text, a line for each.
std::string figures_list(const ModelFigures& figures);

/// The figures of several models as a table with a row for each.
std::string figures_table(const std::vector<ModelFigures>& all);

/// A JSON object with all models.
std::string figures_json(const std::vector<ModelFigures>& all);

/// "inch" or "mm".
std::string units_name(ModelUnits units);

}  // namespace nmk_model
