// The nearest point of a curve: that of its pieces, all of which are measured against the best of
// the others.
#include <ngk/ngkCurve.h>

#include "Piece.h"

template <int Dimension>
int ngkCurve<Dimension>::closest_point(const Point& point,
                                       ngkCurvePoint<Dimension>& nearest) const {
    using nmk_ngk::Piece;
    nearest = ngkCurvePoint<Dimension>();
    const nmk_ngk::Vec<Dimension> query = nmk_ngk::vec_of(point);
    if (!m_is_valid || !query.is_usable() || segment_count() == 0) return 0;
    nmk_ngk::Nearest<Dimension> found(query);
    // Starts first: a near one spares the search in most pieces.
    nmk_ngk::for_each_piece<Dimension>(*this, [&](const Piece<Dimension>& piece, int segment) {
        const double low = piece.range().low;
        if (std::isfinite(low)) found.consider(piece.point(low), segment, low);
    });
    nmk_ngk::for_each_piece<Dimension>(*this, [&](const Piece<Dimension>& piece, int segment) {
        piece.find_nearest(found, segment);
    });
    if (!found.t().is_set()) return 0;
    nearest.point = nmk_ngk::point_of(found.point());
    nearest.t = found.t();
    nearest.distance = point.distance(nearest.point);
    return 1;
}

template <int Dimension>
ngkCurvePoint<Dimension> ngkCurve<Dimension>::closest_point(const Point& point) const {
    ngkCurvePoint<Dimension> nearest;
    closest_point(point, nearest);
    return nearest;
}

template int ngkCurve<2>::closest_point(const Point&, ngkCurvePoint<2>&) const;
template int ngkCurve<3>::closest_point(const Point&, ngkCurvePoint<3>&) const;
template ngkCurvePoint<2> ngkCurve<2>::closest_point(const Point&) const;
template ngkCurvePoint<3> ngkCurve<3>::closest_point(const Point&) const;
