// dxf_entity: one entity of a DXF file, as its groups.

#include "formats/dxf/dxf_entity.h"

#include <algorithm>
#include <cmath>

namespace nmk_dxf {

namespace {

// A normal with x and y below this is near the Z axis; the limit is that of the format.
constexpr double near_z = 1.0 / 64.0;

}  // namespace

const DxfGroup* DxfEntity::find(int code) const {
    const auto found = std::find_if(groups.rbegin(), groups.rend(),
                                    [&](const DxfGroup& group) { return group.code == code; });
    return found == groups.rend() ? nullptr : &*found;
}

double DxfEntity::number(int code, double otherwise) const {
    const DxfGroup* const group = find(code);
    return group != nullptr ? number_of(*group) : otherwise;
}

int DxfEntity::whole_number(int code, int otherwise) const {
    const DxfGroup* const group = find(code);
    return group != nullptr ? whole_number_of(*group) : otherwise;
}

double DxfEntity::needed(int code) const {
    const DxfGroup* const group = find(code);
    if (group != nullptr) return number_of(*group);
    refuse(line, std::string(name) + " without group " + std::to_string(code) +
                     "; expected a number there");
}

giPoint3 DxfEntity::point(int code) const {
    return {needed(code), needed(code + 10), number(code + 20, 0.0)};
}

giWorkplane3 DxfEntity::plane() const {
    const giUnitVec3 normal =
        giUnitVec3::direction_of(giVector3(number(210, 0.0), number(220, 0.0), number(230, 1.0)));
    if (!normal.is_set()) {
        refuse(line, std::string(name) + ": the extrusion direction has no length");
    }
    const bool is_near_z = std::abs(normal.x) < near_z && std::abs(normal.y) < near_z;
    const giVector3 across = is_near_z ? giVector3(0.0, 1.0, 0.0) : giVector3(0.0, 0.0, 1.0);
    const giVector3 x_axis = across.cross(normal.vector());
    const giUnitVec3 y_axis = giUnitVec3::direction_of(normal.vector().cross(x_axis));
    return {giPoint3(giOrigin::origin), y_axis, normal};
}

}  // namespace nmk_dxf
