// ngkTransformedCurve3, ngkTransformedCurve2: the image of a curve under an affine map, with the
// parameters of the curve inside.
#pragma once

#include <ngk/ngkCurve.h>

#pragma GCC visibility push(default)

template <int Dimension>
class ngkTransformedCurve : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Ptr;
    using Xform = typename ngkSpace<Dimension>::Xform;

    /// Shares the curve. Invalid where the handle is empty, the curve invalid, the map not finite,
    /// or the image could have coordinates beyond 1e100.
    ngkTransformedCurve(const Ptr& curve, const Xform& xform);

    /// The curve inside.
    const Ptr& curve() const noexcept { return m_curve; }
    const Xform& xform() const noexcept { return m_xform; }

    int segment_count() const noexcept override { return m_segment_count; }
    ngkRange range(int segment) const noexcept override;

    /// The image of the reversed curve.
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    double extent() const override;
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

  private:
    Ptr m_curve;
    Xform m_xform;
    int m_segment_count;  // asking the curves within takes a step for each
};

extern template class ngkTransformedCurve<2>;
extern template class ngkTransformedCurve<3>;

using ngkTransformedCurve2 = ngkTransformedCurve<2>;
using ngkTransformedCurve3 = ngkTransformedCurve<3>;

#pragma GCC visibility pop
