// ngkArc3, ngkArc2: a part of a circle, at most one turn. The value is the circle's angle in
// radians; it may be more than 2 pi.
#pragma once

#include <ngk/ngkCircle.h>
#include <ngk/ngkCurve.h>

#pragma GCC visibility push(default)

template <int Dimension>
class ngkArc : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Point;
    using typename Base::Ptr;

    /// From the angle of one point to that of the other, forwards; a full turn where both are the
    /// same. An end that is at most ngk_TOLCOINCPOINT3D from the circle is what the arc evaluates
    /// to there, to the bit.
    ngkArc(const ngkCircle<Dimension>& circle, const Point& start, const Point& end);

    /// From one angle to the other in radians, forwards: whole turns are added to, or taken from,
    /// `end_angle` until it is above `start_angle` by at most one turn.
    ngkArc(const ngkCircle<Dimension>& circle, double start_angle, double end_angle);

    /// The same with the ends that the arc evaluates to.
    ngkArc(const ngkCircle<Dimension>& circle, const ngkRange& angles, const Point& start,
           const Point& end);

    const ngkCircle<Dimension>& circle() const noexcept { return m_circle; }
    const ngkRange& angles() const noexcept { return m_angles; }
    Point start() const noexcept { return nmk_ngk::point_of(m_start); }
    Point end() const noexcept { return nmk_ngk::point_of(m_end); }

    ngkRange range(int segment) const noexcept override;
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

  private:
    void take_ends(const Point& start, const Point& end);

    ngkCircle<Dimension> m_circle;
    ngkRange m_angles;
    nmk_ngk::Vec<Dimension> m_start{};
    nmk_ngk::Vec<Dimension> m_end{};
};

extern template class ngkArc<2>;
extern template class ngkArc<3>;

using ngkArc2 = ngkArc<2>;
using ngkArc3 = ngkArc<3>;

#pragma GCC visibility pop
