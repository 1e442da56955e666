// ngkSurf: a surface in space over a rectangle of two values u and v, on which curves can lie.
#pragma once

#include <geometry/giBox2.h>
#include <geometry/giPoint2.h>
#include <geometry/giPoint3.h>
#include <ncamcontainer/coPrf.h>
#include <ngk/Vec.h>
#include <ngk/ngkT.h>

#pragma GCC visibility push(default)

namespace nmk_ngk {

/// A point of a surface with all its derivatives up to the second.
struct SurfaceJet {
    Vec<3> point;
    Vec<3> u, v;
    Vec<3> uu, uv, vv;
};

/// No derivative within a rectangle is longer than these. `uu` to `vv` are infinite where the first
/// derivatives jump.
struct SurfaceBounds {
    double u, v;
    double uu, uv, vv;
};

}  // namespace nmk_ngk

class ngkSurf {
  public:
    virtual ~ngkSurf();

    bool is_valid() const noexcept { return m_is_valid; }

    /// The values of u and of v; infinite where the surface has no end.
    virtual ngkRange u_range() const noexcept = 0;
    virtual ngkRange v_range() const noexcept = 0;

    /// The point at (u, v). Returns non-zero; 0 with the point unset where the surface is invalid
    /// or (u, v) is not in its rectangle.
    int evaluate(const giPoint2& uv, giPoint3& point) const;

    // What the kernel is built on; callers have no need of it.

    /// u and v are in the rectangle of a valid surface, or beyond it by rounding.
    virtual nmk_ngk::SurfaceJet jet_at(double u, double v) const = 0;
    virtual nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const = 0;

  protected:
    ngkSurf() = default;
    ngkSurf(const ngkSurf&) = default;
    ngkSurf& operator=(const ngkSurf&) = default;

    void set_valid(bool is_valid) noexcept { m_is_valid = is_valid; }

  private:
    bool m_is_valid = false;
};

using ngkSurfPtr = coPrf<const ngkSurf>;

#pragma GCC visibility pop
