// ngkCurveOnSurf3: a curve of the plane, carried over to space by a surface. It has the parameters
// of the curve of the plane, whose coordinates are the surface's u and v.
//
// Its box may be too small by 1e-8 of its extent.
#pragma once

#include <ngk/ngkCurve.h>
#include <ngk/ngkSurf.h>

#pragma GCC visibility push(default)

class ngkCurveOnSurf3 : public ngkCurve<3> {
  public:
    /// Shares both. Invalid where a handle is empty or what it has invalid, where the curve lacks
    /// an end or a segment, or leaves the surface's rectangle by more than 1e-9 of its size.
    ngkCurveOnSurf3(const ngkCurvePtr2& curve, const ngkSurfPtr& surface);

    const ngkCurvePtr2& curve() const noexcept { return m_curve; }
    const ngkSurfPtr& surface() const noexcept { return m_surface; }

    int segment_count() const noexcept override { return m_segment_count; }
    ngkRange range(int segment) const noexcept override;

    /// The reversed curve of the plane on the same surface.
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<3> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<3> jet_at(const ngkT& t) const override;
    double extent() const override { return m_extent; }
    void visit_pieces(nmk_ngk::PieceVisitor<3>& visitor, nmk_ngk::PieceOrder order) const override;

  private:
    ngkCurvePtr2 m_curve;
    ngkSurfPtr m_surface;
    double m_extent = 0.0;
    int m_segment_count;  // asking the curves within takes a step for each
};

#pragma GCC visibility pop
