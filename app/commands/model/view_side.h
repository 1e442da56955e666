// view_side.h: the named sides from which a model is seen, without perspective.
//
// X is to the right and Z upwards in the view from the front; the view from the top has Y upwards.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giVector3.h>

#include <span>

#include "shell/option_values.h"

namespace nmk_model {

enum class ViewSide { iso, front, back, left, right, top, bottom };

/// The words of `--from`.
std::span<const nmk_shell::Choice<ViewSide>> view_sides();

/// Unit vectors at right angles: to the right and upwards in the picture, and towards the viewer.
struct ViewAxes {
    giVector3 right, up, towards;
};

ViewAxes view_axes(ViewSide side);

}  // namespace nmk_model
