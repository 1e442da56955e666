#include <exactmath/exact_sine.h>
#include <geometry/giWorkplane3.h>
#include <geometry/giXform3.h>

#include <Eigen/Dense>
#include <cmath>

#include "xform_kind.h"

namespace {

// The translation that leaves `centre` where it is.
giVector3 translation_about(const giPoint3& centre, const giXform3::Matrix& linear) {
    const giVector3 from_origin(centre.x, centre.y, centre.z);
    return from_origin - giXform3(linear, giVector3()).transform(from_origin);
}

}  // namespace

giXform3::giXform3(const Matrix& linear, const giVector3& translation)
    : m_linear(linear),
      m_translation(translation),
      m_kind(nmk_geometry::kind_of(linear, translation)) {}

giXform3::giXform3(giXform3ScaleType, double x_factor, double y_factor, double z_factor)
    : giXform3({{{x_factor, 0.0, 0.0}, {0.0, y_factor, 0.0}, {0.0, 0.0, z_factor}}}, giVector3()) {}

giXform3 giXform3::translation(const giVector3& by) { return giXform3(giXform3().m_linear, by); }

giXform3 giXform3::rotation(const giPoint3& centre, const giUnitVec3& axis, const giAngle& angle) {
    const double cosine = nmk_exact::exact_cos(angle.angle(giAngleRadians()));
    const double sine = nmk_exact::exact_sin(angle.angle(giAngleRadians()));
    const double rest = 1.0 - cosine;
    const double x = axis.x;
    const double y = axis.y;
    const double z = axis.z;
    const Matrix linear = {
        {{cosine + x * x * rest, x * y * rest - z * sine, x * z * rest + y * sine},
         {y * x * rest + z * sine, cosine + y * y * rest, y * z * rest - x * sine},
         {z * x * rest - y * sine, z * y * rest + x * sine, cosine + z * z * rest}}};
    return giXform3(linear, translation_about(centre, linear));
}

giXform3 giXform3::mirror(const giPoint3& point, const giUnitVec3& normal) {
    const double x = normal.x;
    const double y = normal.y;
    const double z = normal.z;
    const Matrix linear = {{{1.0 - 2.0 * x * x, -2.0 * x * y, -2.0 * x * z},
                            {-2.0 * y * x, 1.0 - 2.0 * y * y, -2.0 * y * z},
                            {-2.0 * z * x, -2.0 * z * y, 1.0 - 2.0 * z * z}}};
    const double distance = point.x * x + point.y * y + point.z * z;
    return giXform3(linear, giVector3(x, y, z) * (2.0 * distance));
}

giPoint3 giXform3::transform(const giPoint3& point) const noexcept {
    const giVector3 turned = transform(giVector3(point.x, point.y, point.z));
    return giPoint3(turned.x, turned.y, turned.z) + m_translation;
}

giVector3 giXform3::transform(const giVector3& vector) const noexcept {
    const auto row = [&](std::size_t i) {
        return m_linear[i][0] * vector.x + m_linear[i][1] * vector.y + m_linear[i][2] * vector.z;
    };
    return {row(0), row(1), row(2)};
}

void giXform3::transform(const giWorkplane3& in, giWorkplane3& out) const {
    const giUnitVec3 y(transform(in.y_axis().vector()));
    const giUnitVec3 z(transform(in.z_axis().vector()));
    out.become(transform(in.origin()), y, z);
}

giXform3 giXform3::inverse(int& status) const {
    status = m_kind != giXform3Singular ? 1 : 0;
    if (status == 0) return giXform3();
    Eigen::Matrix3d matrix;
    for (int i = 0; i < 9; ++i) {
        matrix(i / 3, i % 3) =
            m_linear[static_cast<std::size_t>(i / 3)][static_cast<std::size_t>(i % 3)];
    }
    const Eigen::Matrix3d inverted = matrix.inverse();
    Matrix linear{};
    for (int i = 0; i < 9; ++i) {
        linear[static_cast<std::size_t>(i / 3)][static_cast<std::size_t>(i % 3)] =
            inverted(i / 3, i % 3);
    }
    return giXform3(linear, giXform3(linear, giVector3()).transform(m_translation) * -1.0);
}

giXform3 operator*(const giXform3& left, const giXform3& right) {
    giXform3::Matrix linear{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            for (std::size_t i = 0; i < 3; ++i) {
                linear[row][column] += left.linear()[row][i] * right.linear()[i][column];
            }
        }
    }
    return giXform3(linear, left.transform(right.translation()) + left.translation());
}
