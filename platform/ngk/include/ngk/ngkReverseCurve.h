// ngkReverseCurve3, ngkReverseCurve2: a curve that runs through another from its end to its start.
//
// Segments are counted from the end. A segment keeps its range: value low + high - v is where the
// curve inside has v; for lines without an end -v.
#pragma once

#include <ngk/ngkCurve.h>

#pragma GCC visibility push(default)

template <int Dimension>
class ngkReverseCurve : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Ptr;

    /// Shares the curve. Invalid where the handle is empty or the curve invalid.
    explicit ngkReverseCurve(const Ptr& curve);

    /// The curve inside.
    const Ptr& curve() const noexcept { return m_curve; }

    /// The same parameter of the curve inside; also the other way round.
    ngkT turned(const ngkT& t) const noexcept;

    int segment_count() const noexcept override { return m_segment_count; }
    ngkRange range(int segment) const noexcept override;

    /// The curve inside.
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    double extent() const override { return m_curve->extent(); }
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

  private:
    Ptr m_curve;
    int m_segment_count;  // asking the curves within takes a step for each
};

extern template class ngkReverseCurve<2>;
extern template class ngkReverseCurve<3>;

using ngkReverseCurve2 = ngkReverseCurve<2>;
using ngkReverseCurve3 = ngkReverseCurve<3>;

#pragma GCC visibility pop
