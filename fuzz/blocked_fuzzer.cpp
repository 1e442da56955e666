// blocked_fuzzer: any bytes as a list of blocked points: read, made a lattice, and searched if that
// is small.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "commands/route/find_route.h"
#include "formats/blocked/blocked_reader.h"

namespace {

constexpr std::size_t max_searched = 300;  // cells; more would only slow the fuzzer down

void search(const nmk_lattice::RoutePlane& plane, const nmk_blocked::BlockedList& list,
            nmk_route::GoalKind kind) {
    nmk_route::RouteRequest request;
    request.start = list.box->lower;
    request.goal = plane.at({plane.columns() - 1, plane.rows() / 2});
    request.kind = kind;
    request.gradient = 0.5;
    request.cut_corners = true;
    if (!nmk_route::check_request(plane, request).empty()) {
        return;
    }
    const nmk_route::FoundRoute route = nmk_route::find_route(plane, request, nullptr);
    // The steps are exact: no cell is ever closed twice at two points.
    if (route.closed.size() > plane.cell_count() - plane.blocked_count()) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto read = nmk_blocked::read_blocked_list("fuzz.csv", text);
    const auto* list = read ? &*read : nullptr;
    if (list == nullptr || !list->box || !list->steps) {
        return 0;
    }
    const auto made = nmk_blocked::plane_of_list(*list, list->box->lower);
    const auto* of_list = made ? &*made : nullptr;
    if (of_list == nullptr || of_list->plane.cell_count() > max_searched) {
        return 0;
    }
    for (const nmk_route::GoalKind kind :
         {nmk_route::GoalKind::point, nmk_route::GoalKind::line,
          nmk_route::GoalKind::line_with_gradient, nmk_route::GoalKind::moving_line}) {
        search(of_list->plane, *list, kind);
    }
    return 0;
}
