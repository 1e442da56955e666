// ControlNet: bounds of the derivatives of a NURBS surface, by differences of its control points.
#pragma once

#include <ngk/ngkNurbSurf.h>

#include "knots.h"

namespace nmk_ngk {

class ControlNet {
  public:
    ControlNet(const ngkKnots& u, const ngkKnots& v, std::span<const Vec<3>> points,
               std::span<const double> weights) noexcept
        : m_u(u), m_v(v), m_points(points), m_weights(weights) {}

    /// Over the rectangle of u and v, which are within the surface's. Second derivatives are
    /// infinite where the first ones jump inside.
    SurfaceBounds bounds_over(const ngkRange& u, const ngkRange& v) const;

  private:
    const ngkKnots& m_u;
    const ngkKnots& m_v;
    std::span<const Vec<3>> m_points;
    std::span<const double> m_weights;
};

}  // namespace nmk_ngk
