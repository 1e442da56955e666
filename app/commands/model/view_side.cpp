// view_side: the named sides from which a model is seen, without perspective.

#include "commands/model/view_side.h"

#include <cmath>

namespace nmk_model {

namespace {

constexpr nmk_shell::Choice<ViewSide> sides[] = {
    {"iso", ViewSide::iso, "from the right, in front and above"},
    {"front", ViewSide::front, "X to the right, Z upwards"},
    {"back", ViewSide::back, ""},
    {"left", ViewSide::left, ""},
    {"right", ViewSide::right, ""},
    {"top", ViewSide::top, "X to the right, Y upwards"},
    {"bottom", ViewSide::bottom, ""}};

}  // namespace

std::span<const nmk_shell::Choice<ViewSide>> view_sides() { return sides; }

ViewAxes view_axes(ViewSide side) {
    const double half = std::sqrt(1.0 / 2.0);
    const double third = std::sqrt(1.0 / 3.0);
    const double sixth = std::sqrt(1.0 / 6.0);
    switch (side) {
        case ViewSide::iso:
            return {{half, half, 0}, {-sixth, sixth, 2 * sixth}, {third, -third, third}};
        case ViewSide::front:
            return {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}};
        case ViewSide::back:
            return {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}};
        case ViewSide::left:
            return {{0, -1, 0}, {0, 0, 1}, {-1, 0, 0}};
        case ViewSide::right:
            return {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}};
        case ViewSide::top:
            return {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        case ViewSide::bottom:
            return {{1, 0, 0}, {0, -1, 0}, {0, 0, -1}};
    }
    return {};
}

}  // namespace nmk_model
