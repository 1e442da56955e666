#include <geometry/giWorkplane3.h>
#include <mfc/CArchive.h>

#include <cmath>

#include "finite_coordinates.h"

using nmk_geometry::is_finite;

namespace {

// How far axes that are read may be from unit length and from a right angle. No unit.
constexpr double largest_error_of_axes = 1e-6;

// The part of `reference` across `normal`, unset where that counts as zero.
giUnitVec3 across(const giUnitVec3& reference, const giUnitVec3& normal) {
    if (!reference.is_set()) return giUnitVec3();
    return giUnitVec3(reference.vector() - normal.vector() * reference.dot(normal));
}

giUnitVec3 y_axis_for(const giUnitVec3& reference, const giUnitVec3& normal) {
    giUnitVec3 y = across(reference, normal);
    if (!y.is_set()) y = across(giUnitVec3(giAxis::y), normal);
    if (!y.is_set()) y = across(giUnitVec3(giAxis::x), normal);
    return y;
}

template <class Triple>
void write(CArchive& archive, const Triple& triple) {
    archive << triple.x << triple.y << triple.z;
}

template <class Triple>
void read(CArchive& archive, Triple& triple) {
    archive >> triple.x >> triple.y >> triple.z;
}

bool are_axes(const giUnitVec3& y, const giUnitVec3& z) {
    if (!y.is_set() && !z.is_set()) return true;
    return std::abs(y.vector().length() - 1.0) <= largest_error_of_axes &&
           std::abs(z.vector().length() - 1.0) <= largest_error_of_axes &&
           std::abs(y.dot(z)) <= largest_error_of_axes;
}

giUnitVec3 x_axis_for(const giUnitVec3& y, const giUnitVec3& z) {
    return y.is_set() && z.is_set() ? giUnitVec3(y.vector().cross(z.vector())) : giUnitVec3();
}

}  // namespace

giWorkplane3::giWorkplane3() noexcept
    : m_origin(giOrigin::origin), m_x(giAxis::x), m_y(giAxis::y), m_z(giAxis::z) {}

giWorkplane3::giWorkplane3(const giPoint3& origin, const giUnitVec3& reference,
                           const giUnitVec3& normal) {
    become(origin, reference, normal);
}

void giWorkplane3::become(const giPoint3& origin, const giUnitVec3& reference,
                          const giUnitVec3& normal) {
    const giUnitVec3 y = normal.is_set() ? y_axis_for(reference, normal) : giUnitVec3();
    m_origin = origin;
    m_z = normal;
    m_y = y;
    m_x = x_axis_for(m_y, m_z);
}

giXform3 giWorkplane3::xform_to_work() const {
    const giXform3::Matrix rows = {
        {{m_x.x, m_x.y, m_x.z}, {m_y.x, m_y.y, m_y.z}, {m_z.x, m_z.y, m_z.z}}};
    const giVector3 to_origin(m_origin.x, m_origin.y, m_origin.z);
    return giXform3(rows, giXform3(rows, giVector3()).transform(to_origin) * -1.0);
}

giXform3 giWorkplane3::xform_to_world() const {
    const giXform3::Matrix rows = {
        {{m_x.x, m_y.x, m_z.x}, {m_x.y, m_y.y, m_z.y}, {m_x.z, m_y.z, m_z.z}}};
    return giXform3(rows, giVector3(m_origin.x, m_origin.y, m_origin.z));
}

CArchive& operator<<(CArchive& archive, const giWorkplane3& plane) {
    write(archive, plane.origin());
    write(archive, plane.y_axis());
    write(archive, plane.z_axis());
    return archive;
}

CArchive& operator>>(CArchive& archive, giWorkplane3& plane) {
    giWorkplane3 loaded;
    read(archive, loaded.m_origin);
    read(archive, loaded.m_y);
    read(archive, loaded.m_z);
    const bool is_valid = is_finite(loaded.m_origin) && is_finite(loaded.m_y) &&
                          is_finite(loaded.m_z) && are_axes(loaded.m_y, loaded.m_z);
    if (!is_valid) throw CArchiveException(CArchiveException::badIndex);
    loaded.m_x = x_axis_for(loaded.m_y, loaded.m_z);
    plane = loaded;
    return archive;
}
