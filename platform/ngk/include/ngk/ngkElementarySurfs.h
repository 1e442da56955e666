// ngkPlaneSurf, ngkCylinderSurf, ngkSphereSurf, ngkBilinearSurf: the surfaces with a closed
// formula.
#pragma once

#include <geometry/giWorkplane3.h>
#include <ngk/ngkSurf.h>

#include <array>

#pragma GCC visibility push(default)

/// A plane without bounds: u along its X axis, v along its Y axis.
class ngkPlaneSurf : public ngkSurf {
  public:
    explicit ngkPlaneSurf(const giWorkplane3& plane);

    const giWorkplane3& plane() const noexcept { return m_plane; }

    ngkRange u_range() const noexcept override;
    ngkRange v_range() const noexcept override;
    nmk_ngk::SurfaceJet jet_at(double u, double v) const override;
    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override;

  private:
    giWorkplane3 m_plane;
};

/// A cylinder about the Z axis of a plane, without ends: u is the angle from the X axis in radians,
/// of any size, and v the height. Invalid for a radius that is not above 0.
class ngkCylinderSurf : public ngkSurf {
  public:
    ngkCylinderSurf(const giWorkplane3& plane, double radius);

    const giWorkplane3& plane() const noexcept { return m_plane; }
    double radius() const noexcept { return m_radius; }

    ngkRange u_range() const noexcept override;
    ngkRange v_range() const noexcept override;
    nmk_ngk::SurfaceJet jet_at(double u, double v) const override;
    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override;

  private:
    giWorkplane3 m_plane;
    double m_radius;
};

/// A sphere about the origin of a plane: u is the longitude from the X axis, of any size, v the
/// latitude from -pi / 2 to pi / 2. Invalid for a radius that is not above 0.
class ngkSphereSurf : public ngkSurf {
  public:
    ngkSphereSurf(const giWorkplane3& plane, double radius);

    const giWorkplane3& plane() const noexcept { return m_plane; }
    double radius() const noexcept { return m_radius; }

    ngkRange u_range() const noexcept override;
    ngkRange v_range() const noexcept override;
    nmk_ngk::SurfaceJet jet_at(double u, double v) const override;
    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override;

  private:
    giWorkplane3 m_plane;
    double m_radius;
};

/// The surface of the lines between two lines, u and v from 0 to 1. The corners are those at
/// (u, v) = (0, 0), (1, 0), (0, 1), (1, 1).
class ngkBilinearSurf : public ngkSurf {
  public:
    explicit ngkBilinearSurf(const std::array<giPoint3, 4>& corners);

    const std::array<giPoint3, 4>& corners() const noexcept { return m_corners; }

    ngkRange u_range() const noexcept override;
    ngkRange v_range() const noexcept override;
    nmk_ngk::SurfaceJet jet_at(double u, double v) const override;
    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override;

  private:
    std::array<giPoint3, 4> m_corners;
};

#pragma GCC visibility pop
