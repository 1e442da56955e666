// travel_families.h: kinds of small travel problems that the tests draw.
#pragma once

#include <ostream>

#include "ordering/plain_travel.h"

namespace plain {

struct TravelFamily {
    const char* name;
    TravelTraits traits;
};

inline std::ostream& operator<<(std::ostream& out, const TravelFamily& family) {
    return out << family.name;
}

inline constexpr TravelFamily travel_families[] = {
    {"points", {}},
    {"points_in_space", {.has_z = true}},
    {"coincident_points", {.side = 3}},
    {"lines", {.has_lines = true}},
    {"one_way_lines", {.has_one_way_lines = true}},
    {"mixed", {.has_lines = true, .has_one_way_lines = true, .has_z = true}},
    {"grouped", {.has_groups = true}},
    {"mixed_groups", {.has_lines = true, .has_one_way_lines = true, .has_groups = true}}};

}  // namespace plain
