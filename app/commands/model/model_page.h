// model_page.h: one self-contained HTML page in which a model is turned, with its figures.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <cstddef>
#include <optional>
#include <string>

#include "commands/model/model_figures.h"
#include "commands/model/view_side.h"
#include "commands/model/welded_mesh.h"

namespace nmk_model {

/// A page has at most so many triangles, and free edges; a larger mesh is reduced for it.
inline constexpr std::size_t max_page_triangles = 150'000;
inline constexpr std::size_t max_page_edges = 50'000;

/// The page; empty after a request to stop.
std::optional<std::string> model_page(const ModelFigures& figures, const WeldedMesh& mesh,
                                      ViewSide side, nmkProgressBreak& progress);

}  // namespace nmk_model
