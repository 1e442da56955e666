#include <ngk/ngkCurveOnSurf3.h>

#include "SurfacePiece.h"

using nmk_ngk::Jet;
using nmk_ngk::Vec;

namespace {

// How far a curve may leave the surface's rectangle, as a part of the rectangle's size: what
// rounding can do to a curve along an edge.
constexpr double slack_part = 1e-9;

bool covers(const ngkRange& range, double low, double high) {
    if (!std::isfinite(range.low) || !std::isfinite(range.high)) return true;
    const double slack = (range.high - range.low) * slack_part;
    return low >= range.low - slack && high <= range.high + slack;
}

// No point of the surface over a rectangle is further from the origin than this.
double extent_over(const ngkSurf& surface, const giBox2& box) {
    const Vec<3> corner = surface.jet_at(box.min().x, box.min().y).point;
    const nmk_ngk::SurfaceBounds bounds = surface.bounds_over(box);
    return corner.norm() + bounds.u * box.width() + bounds.v * box.height();
}

// The extent of the curve on the surface; NaN where it lacks an end or leaves the surface.
double extent_on(const ngkCurve2& curve, const ngkSurf& surface) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const bool has_ends = curve.t_at(0.0).is_set() && curve.t_at(1.0).is_set();
    if (!has_ends) return none;
    const giBox2 box = curve.bounding_box();
    const bool is_inside = covers(surface.u_range(), box.min().x, box.max().x) &&
                           covers(surface.v_range(), box.min().y, box.max().y);
    return is_inside ? extent_over(surface, box) : none;
}

}  // namespace

ngkCurveOnSurf3::ngkCurveOnSurf3(const ngkCurvePtr2& curve, const ngkSurfPtr& surface)
    : m_curve(curve), m_surface(surface), m_segment_count(curve ? curve->segment_count() : 0) {
    if (!curve || !surface || !curve->is_valid() || !surface->is_valid()) return;
    m_extent = extent_on(*curve, *surface);
    set_valid(m_extent <= nmk_ngk::largest_coordinate);
}

ngkRange ngkCurveOnSurf3::range(int segment) const noexcept { return m_curve->range(segment); }

ngkCurvePtr3 ngkCurveOnSurf3::reverse() const {
    return is_valid() ? Ptr(new ngkCurveOnSurf3(m_curve->reverse(), m_surface)) : Ptr();
}

std::pair<ngkCurvePtr3, ngkCurvePtr3> ngkCurveOnSurf3::split(const ngkT& t) const {
    if (!contains(t)) return {};
    const auto [first, second] = m_curve->split(t);
    if (!first) return {};
    return {Ptr(new ngkCurveOnSurf3(first, m_surface)),
            Ptr(new ngkCurveOnSurf3(second, m_surface))};
}

Vec<3> ngkCurveOnSurf3::point_at(const ngkT& t) const {
    const Vec<2> uv = m_curve->point_at(t);
    return m_surface->jet_at(uv[0], uv[1]).point;
}

Jet<3> ngkCurveOnSurf3::jet_at(const ngkT& t) const {
    const Jet<2> uv = m_curve->jet_at(t);
    return nmk_ngk::carried_over(m_surface->jet_at(uv.point[0], uv.point[1]), uv);
}

void ngkCurveOnSurf3::visit_pieces(nmk_ngk::PieceVisitor<3>& visitor,
                                   nmk_ngk::PieceOrder order) const {
    const auto visit = [&](const nmk_ngk::Piece<2>& piece, int segment) {
        visitor.visit(nmk_ngk::SurfacePiece(piece, *m_surface), segment);
    };
    nmk_ngk::for_each_piece<2>(*m_curve, visit, order);
}
