// ngkCompCurve3, ngkCompCurve2: curves joined end to start.
//
// Its segments are those of its curves, counted on from curve to curve. Without curves it is
// invalid.
#pragma once

#include <ngk/ngkCurve.h>

#include <vector>

#pragma GCC visibility push(default)

template <int Dimension>
class ngkCompCurve : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Ptr;

    /// `tolerance`: how far the end of one curve may be from the start of the next.
    explicit ngkCompCurve(double tolerance) noexcept : m_tolerance(tolerance) {}

    /// Joins a curve to the end, and shares it. Returns non-zero; 0 and changes nothing where the
    /// handle is empty, the curve is invalid, has no segment or lacks an end, begins further than
    /// the tolerance from where the last one ended, or where segments could no longer be counted.
    int add_segment_end(const Ptr& curve);

    double tolerance() const noexcept { return m_tolerance; }
    int curve_count() const noexcept { return static_cast<int>(m_curves.size()); }

    /// `index` from 0 to below curve_count().
    const Ptr& curve(int index) const noexcept { return m_curves[static_cast<std::size_t>(index)]; }

    int segment_count() const noexcept override;
    ngkRange range(int segment) const noexcept override;

    /// The curves reversed, from last to first.
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    double extent() const override;
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

  private:
    std::size_t curve_with(int segment) const noexcept;
    ngkT within(const ngkT& t, std::size_t curve) const noexcept;

    double m_tolerance;
    std::vector<Ptr> m_curves;
    std::vector<int> m_first_segments{0};  // of each curve; at the end their number
};

extern template class ngkCompCurve<2>;
extern template class ngkCompCurve<3>;

using ngkCompCurve2 = ngkCompCurve<2>;
using ngkCompCurve3 = ngkCompCurve<3>;

#pragma GCC visibility pop
