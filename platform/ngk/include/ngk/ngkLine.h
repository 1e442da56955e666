// ngkLine3, ngkLine2: a straight line between two points, from a point on, or without ends.
//
// The value of a bounded line is 0 at the start and 1 at the end; otherwise it is the distance from
// the point along the direction.
#pragma once

#include <geometry/giUnitVec3.h>
#include <ngk/ngkCurve.h>

#include <concepts>

#pragma GCC visibility push(default)

enum class ngkLineKind { bounded, half, infinite };

template <int Dimension>
class ngkLine : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Point;
    using typename Base::Ptr;
    using typename Base::Vector;

    /// From `start` to `end`, which may be equal.
    ngkLine(const Point& start, const Point& end);

    /// Without one end or both, through `point`. The direction is made unit; where it is unset,
    /// zero or not finite the line is invalid. `kind` is half or infinite.
    ngkLine(const Point& point, const Vector& direction, ngkLineKind kind);
    template <std::same_as<giUnitVec3> Direction>
    ngkLine(const Point& point, const Direction& direction, ngkLineKind kind)
        : ngkLine(point, direction.vector(), kind) {}

    ngkLineKind kind() const noexcept { return m_kind; }
    Point start() const noexcept { return nmk_ngk::point_of(m_start); }

    /// Of a bounded line; otherwise one unit further.
    Point end() const noexcept { return nmk_ngk::point_of(m_end); }

    /// From start to end, for lines without an end the unit direction.
    Vector direction() const noexcept { return nmk_ngk::vector_of(m_direction); }

    ngkRange range(int segment) const noexcept override;
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

  private:
    ngkLineKind m_kind = ngkLineKind::bounded;
    ngkRange m_range;
    nmk_ngk::Vec<Dimension> m_start{};
    nmk_ngk::Vec<Dimension> m_end{};
    nmk_ngk::Vec<Dimension> m_direction{};
};

extern template class ngkLine<2>;
extern template class ngkLine<3>;

using ngkLine2 = ngkLine<2>;
using ngkLine3 = ngkLine<3>;

#pragma GCC visibility pop
