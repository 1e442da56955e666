// ngkPolyline3, ngkPolyline2: points joined by straight lines. Segment i runs from point i to point
// i + 1, with values from 0 to 1.
//
// A polyline without points is valid and has no segment; one of a single point has one segment,
// which stays there.
#pragma once

#include <ngk/ngkCurve.h>

#include <span>
#include <vector>

#pragma GCC visibility push(default)

template <int Dimension>
class ngkPolyline : public ngkCurve<Dimension> {
  public:
    using Base = ngkCurve<Dimension>;
    using typename Base::Point;
    using typename Base::Ptr;

    ngkPolyline();
    explicit ngkPolyline(std::span<const Point> points);

    /// Appends a point. One that is unset, not finite or beyond 1e100 makes the polyline invalid.
    void add_point(const Point& point);
    void reserve(int count);
    void clear();

    int point_count() const noexcept { return static_cast<int>(m_points.size()); }

    /// `index` from 0 to below point_count().
    const Point& point(int index) const noexcept {
        return m_points[static_cast<std::size_t>(index)];
    }
    std::span<const Point> points() const noexcept { return m_points; }

    int segment_count() const noexcept override;
    ngkRange range(int segment) const noexcept override;
    Ptr reverse() const override;
    std::pair<Ptr, Ptr> split(const ngkT& t) const override;
    nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const override;
    nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const override;
    void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                      nmk_ngk::PieceOrder order) const override;

  private:
    nmk_ngk::Vec<Dimension> start_of(int segment) const noexcept;
    nmk_ngk::Vec<Dimension> end_of(int segment) const noexcept;

    std::vector<Point> m_points;
};

extern template class ngkPolyline<2>;
extern template class ngkPolyline<3>;

using ngkPolyline2 = ngkPolyline<2>;
using ngkPolyline3 = ngkPolyline<3>;

#pragma GCC visibility pop
