// ngkCircle3, ngkCircle2: a full circle. It begins on the X axis of its plane and turns towards the
// Y axis; the value is the angle in radians, from 0 to 2 pi.
#pragma once

#include <ngk/ngkCurve.h>

#pragma GCC visibility push(default)

template <int Dimension>
class ngkCircle : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Point;
    using typename Base::Ptr;
    using Plane = typename ngkSpace<Dimension>::Plane;

    /// Invalid where the plane is unset, or the radius below 0 or not finite. Radius 0 is a point.
    ngkCircle(const Plane& plane, double radius);

    /// In the plane: begins to the right of the centre and turns to the left.
    ngkCircle(const giPoint2& centre, double radius) requires(Dimension == 2);

    const Plane& plane() const noexcept { return m_plane; }
    Point centre() const noexcept { return nmk_ngk::point_of(m_centre); }
    double radius() const noexcept { return m_radius; }

    /// Also with the axes times the radius, which a reversed circle has from the other one to the
    /// bit. Invalid where they are not those of the plane, within rounding.
    ngkCircle(const Plane& plane, double radius, const nmk_ngk::Vec<Dimension>& x_radius,
              const nmk_ngk::Vec<Dimension>& y_radius);

    /// The angle in radians, from 0 to below 2 pi, at which the point is seen from the centre; 0
    /// for the centre itself.
    double angle_of(const Point& point) const;

    ngkRange range(int segment) const noexcept override;
    Ptr reverse() const override;

    /// Two arcs.
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

    /// The circle that runs the other way from the same point.
    ngkCircle reversed_circle() const;

    // The centre, and the axes times the radius.
    const nmk_ngk::Vec<Dimension>& centre_vec() const noexcept { return m_centre; }
    const nmk_ngk::Vec<Dimension>& x_radius() const noexcept { return m_x; }
    const nmk_ngk::Vec<Dimension>& y_radius() const noexcept { return m_y; }

  private:
    Plane m_plane;
    double m_radius;
    nmk_ngk::Vec<Dimension> m_centre{};
    nmk_ngk::Vec<Dimension> m_x{};
    nmk_ngk::Vec<Dimension> m_y{};
};

extern template class ngkCircle<2>;
extern template class ngkCircle<3>;

using ngkCircle2 = ngkCircle<2>;
using ngkCircle3 = ngkCircle<3>;

#pragma GCC visibility pop
