// giXform3: an affine map of space, p -> L p + t, and what kind of map it is.
//
// The kind is found from the matrix when the map is made. Kinds that change the hand (a right hand
// becomes a left one) have the numbers 8 to 14.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>
#include <geometry/giVector3.h>

#include <array>
#include <cstdint>

#pragma GCC visibility push(default)

class giWorkplane3;

enum giXform3Kind : std::int32_t {
    giXform3Identity = 0,
    giXform3Translation = 1,
    giXform3Rotation = 2,           // about an axis through the origin
    giXform3Rigid = 3,              // rotation and translation
    giXform3UniformScale = 4,       // about some point
    giXform3Similarity = 5,         // rotation, uniform scale, translation
    giXform3AxisScale = 6,          // factors along the axes that differ, perhaps a translation
    giXform3Affine = 7,             // any other that keeps the hand
    giXform3Mirror = 8,             // reflection in a plane
    giXform3PointReflection = 9,    // in some point
    giXform3RotaryReflection = 10,  // any other that keeps lengths and changes the hand
    giXform3NegativeScale = 11,     // one negative factor, about some point
    giXform3MirrorSimilarity = 12,  // any other with a uniform scale that changes the hand
    giXform3MirrorAxisScale = 13,   // factors along the axes that differ, with a negative product
    giXform3MirrorAffine = 14,      // any other that changes the hand
    giXform3Singular = 15           // flattens space; has no inverse
};

enum giXform3ScaleType { giXform3Scale = 0 };

class giXform3 {
  public:
    /// Rows of the linear part L.
    using Matrix = std::array<std::array<double, 3>, 3>;

    /// The identity.
    giXform3() noexcept = default;
    giXform3(const Matrix& linear, const giVector3& translation);

    /// Factors along the axes, about the origin.
    giXform3(giXform3ScaleType, double x_factor, double y_factor, double z_factor);

    static giXform3 translation(const giVector3& by);

    /// Turns about the axis through `centre`, counter-clockwise seen from the tip of `axis`, which
    /// must be set.
    /// Formula: Rodrigues; Goldstein, Classical Mechanics, 3rd ed., section 4.8.
    static giXform3 rotation(const giPoint3& centre, const giUnitVec3& axis, const giAngle& angle);

    /// Reflects in the plane through `point` with that normal, which must be set.
    static giXform3 mirror(const giPoint3& point, const giUnitVec3& normal);

    giXform3Kind kind() const noexcept { return m_kind; }

    /// True for the kinds 8 to 14.
    bool changes_hand() const noexcept {
        return m_kind >= giXform3Mirror && m_kind <= giXform3MirrorAffine;
    }

    const Matrix& linear() const noexcept { return m_linear; }
    const giVector3& translation() const noexcept { return m_translation; }

    giPoint3 transform(const giPoint3& point) const noexcept;

    /// Vectors are not moved by the translation.
    giVector3 transform(const giVector3& vector) const noexcept;

    /// Maps origin, Y axis and normal of `in` and builds `out` from them, which is right-handed
    /// again and may be `in` itself.
    void transform(const giWorkplane3& in, giWorkplane3& out) const;

    /// The map that undoes this one; the identity for a singular one, with `status` 0 (else 1).
    giXform3 inverse(int& status) const;

    /// First `right`, then `left`.
    friend giXform3 operator*(const giXform3& left, const giXform3& right);

  private:
    Matrix m_linear = {{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
    giVector3 m_translation;
    giXform3Kind m_kind = giXform3Identity;
};

giXform3 operator*(const giXform3& left, const giXform3& right);

#pragma GCC visibility pop
