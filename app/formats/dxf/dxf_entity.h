// dxf_entity.h: one entity of a DXF file, as its groups.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giWorkplane3.h>

#include <optional>
#include <string_view>
#include <vector>

#include "formats/dxf/dxf_groups.h"

namespace nmk_dxf {

/// What an entity leaves as a curve; otherwise why there is none.
struct NoCurve {
    const char* reason;  // "without length"
};

struct DxfEntity {
    std::string_view name;
    std::size_t line = 0;
    std::vector<DxfGroup> groups = {};

    /// The last group with this code; null if there is none.
    const DxfGroup* find(int code) const;

    double number(int code, double otherwise) const;
    int whole_number(int code, int otherwise) const;

    /// The number of a group that the entity must have; an Error if it lacks it.
    double needed(int code) const;

    /// The point of the groups `code`, `code` + 10 and `code` + 20: the first two must be there.
    giPoint3 point(int code) const;

    /// The plane of the entity, by its extrusion direction in the groups 210 to 230: coordinates
    /// are along the axes of this plane, through the origin of the world.
    ///
    /// The X axis of a plane with the normal N is Y x N where N is within 1/64 of the Z axis, in x
    /// and in y, else Z x N; so files define it. An Error for a direction of no length.
    giWorkplane3 plane() const;
};

}  // namespace nmk_dxf
