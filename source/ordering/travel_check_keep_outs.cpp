#include "travel_check_keep_outs.h"

#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "travel_areas.h"

namespace nmk_ordering {

namespace {

// Also false for what is not a number.
bool is_in_range(double coordinate) {
    return std::fabs(coordinate) <= nmkTravelWays::max_coordinate;
}

bool is_in_range(const giPoint3& p) {
    return is_in_range(p.x) && is_in_range(p.y) && is_in_range(p.z);
}

bool is_in_range(const std::vector<giPoint2>& part) {
    for (const giPoint2& p : part) {
        if (!is_in_range(p.x) || !is_in_range(p.y)) return false;
    }
    return true;
}

// In a unit of its own, so that a small polygon does not vanish beside larger ones.
bool is_simple_part(const std::vector<giPoint2>& part) {
    const nmkTravelKeepOut alone{{part}};
    return is_simple(plane_corners(part, unit_of_keep_outs({alone})));
}

std::string fault_of_part(const std::vector<giPoint2>& part) {
    if (part.size() < 3) {
        return std::to_string(part.size()) + " corners; expected a polygon of at least 3";
    }
    if (!is_in_range(part)) return "expected coordinates from -1e100 to 1e100";
    if (!is_simple_part(part)) {
        return "expected a polygon whose edges meet in their common corners only";
    }
    return {};
}

std::size_t corners_of(const std::vector<nmkTravelKeepOut>& keep_outs) {
    std::size_t corners = 0;
    for (const nmkTravelKeepOut& keep_out : keep_outs) {
        for (const std::vector<giPoint2>& part : keep_out.parts) corners += part.size();
    }
    return corners;
}

bool are_places_in_range(const nmkTravelProblem& problem) {
    for (const nmkTravelItem& item : problem.items) {
        if (!is_in_range(item.start)) return false;
        if (item.kind != nmkTravelItemKind::point && !is_in_range(item.end)) return false;
    }
    for (const nmkTravelEnd* end : {&problem.start, &problem.end}) {
        if (end->kind == nmkTravelEnd::Kind::place && !is_in_range(end->place)) return false;
    }
    return true;
}

// A node with a point, as a caller knows it.
std::string name_of(const TravelNetwork& network, int node) {
    if (network.is_place(node)) return node == network.start_node() ? "start: " : "end: ";
    int item = 0;
    while (item + 1 < network.items() && network.first_node(item + 1) <= node) ++item;
    return "item " + std::to_string(item) + ": ";
}

}  // namespace

std::string fault_of_keep_outs(const nmkTravelProblem& problem) {
    const std::vector<nmkTravelKeepOut>& keep_outs = problem.keep_outs;
    if (corners_of(keep_outs) > std::size_t{nmkTravelKeepOut::max_corners}) {
        return "keep-outs: expected at most " + std::to_string(nmkTravelKeepOut::max_corners) +
               " corners in all";
    }
    for (std::size_t i = 0; i < keep_outs.size(); ++i) {
        for (const std::vector<giPoint2>& part : keep_outs[i].parts) {
            const std::string fault = fault_of_part(part);
            if (!fault.empty()) return "keep-out " + std::to_string(i) + ": " + fault;
        }
    }
    if (!keep_outs.empty() && !are_places_in_range(problem)) {
        return "expected coordinates from -1e100 to 1e100 beside keep-outs";
    }
    return {};
}

std::string fault_of_places(const TravelNetwork& network, TravelBudget& budget) {
    if (network.legs() == nullptr) return {};
    const TravelObstacles& obstacles = network.legs()->obstacles();
    TravelAreas areas(obstacles.polygons());
    std::optional<int> area_of_first;
    for (int node = 0; node < network.point_count(); ++node) {
        const PlanePoint p = TravelWays::in_plane(network.points()[static_cast<std::size_t>(node)]);
        if (const std::optional<int> keep_out = obstacles.keep_out_at(p)) {
            return name_of(network, node) + "inside keep-out " + std::to_string(*keep_out) +
                   "; expected a place outside";
        }
        if (budget.is_over() && areas.may_be_enclosed(p)) continue;
        const std::int64_t searched = areas.searched();
        const int area = areas.of(p);
        if (areas.searched() > searched) budget.search();
        if (area != area_of_first.value_or(area)) {
            return name_of(network, node) +
                   "keep-outs enclose it; expected a place that can be reached from the others";
        }
        area_of_first = area;
    }
    return {};
}

}  // namespace nmk_ordering
