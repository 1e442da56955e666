// ngkCurve3, ngkCurve2: a curve in space or in the plane, and what can be asked of every kind.
//
// A curve consists of segments, each with a range of values; ngkT names a segment and a value. A
// fraction from 0 to 1 of the range counts all segments as equally long. Curves are shared through
// counted handles as constants: once a handle has one, threads may use it at the same time.
//
// Coordinates are finite and at most 1e100 in size, else the curve is invalid. Everything that is
// asked of an invalid curve, or with NaN or an unset point, gives the result for failure.
#pragma once

#include <ncamcontainer/builtin_containers.h>
#include <ncamcontainer/coPrf.h>
#include <ngk/ngkCurvePoint.h>
#include <ngk/ngkPolygonizeTRP3.h>
#include <ngk/ngkSpace.h>
#include <ngk/ngkT.h>

#include <utility>

#pragma GCC visibility push(default)

template <int Dimension>
class ngkPolyline;

namespace nmk_ngk {
template <int Dimension>
class PieceVisitor;

enum class PieceOrder { forwards, backwards };

inline PieceOrder opposite(PieceOrder order) noexcept {
    return order == PieceOrder::forwards ? PieceOrder::backwards : PieceOrder::forwards;
}
}  // namespace nmk_ngk

template <int Dimension>
class ngkCurve {
  public:
    using Ptr = coPrf<const ngkCurve>;
    using Point = typename ngkSpace<Dimension>::Point;
    using Vector = typename ngkSpace<Dimension>::Vector;
    using Box = typename ngkSpace<Dimension>::Box;

    virtual ~ngkCurve();

    /// Whether the curve can be evaluated. A polyline without points is valid, and has no segment.
    bool is_valid() const noexcept { return m_is_valid; }

    virtual int segment_count() const noexcept { return 1; }

    /// The values of a segment, which must be at least 0 and below segment_count().
    virtual ngkRange range(int segment) const noexcept = 0;

    /// The parameter at a fraction of the range: 0 and 1 give the ends exactly. Unset where the
    /// fraction is beyond them, where there is no segment, or where the segment has no such end.
    ngkT t_at(double fraction) const noexcept;

    /// The fraction of the range at a parameter; NaN for one that is not in the range, and between
    /// the ends of a segment that lacks one.
    double fraction_at(const ngkT& t) const noexcept;

    /// Whether the curve is valid and the parameter within the range of its segment.
    bool contains(const ngkT& t) const noexcept;

    /// The point at a fraction of the range or at a parameter. Returns non-zero; 0 with the point
    /// unset where t_at() is unset or contains() is false.
    int evaluate(double fraction, Point& point) const;
    int evaluate(const ngkT& t, Point& point) const;

    /// Also the first and second derivative by the value of the parameter; zero vectors on failure.
    int evaluate(const ngkT& t, Point& point, Vector& first, Vector& second) const;

    /// The unit direction of travel. Where the first derivative vanishes (a cusp, control points
    /// that coincide), that of the second: the direction in which the curve goes on from there, or
    /// at the end of a segment arrives. Returns 0 with a zero vector on failure, or where both
    /// vanish.
    int tangent(const ngkT& t, Vector& direction) const;

    /// One over the radius of the circle that fits best; 0 on a line. NaN on failure, and where the
    /// first derivative vanishes.
    double curvature(const ngkT& t) const;

    /// Whether both ends exist and are at most `tolerance` apart.
    bool is_closed(double tolerance) const;

    /// The same points in the opposite order. Lines, arcs, polynomials and polylines come back as
    /// their own kind; an empty handle for an invalid curve.
    virtual Ptr reverse() const = 0;

    /// The two parts that meet at a parameter strictly within the range; empty handles elsewhere.
    /// Both evaluate to the same point there.
    virtual std::pair<Ptr, Ptr> split(const ngkT& t) const = 0;

    /// The point of the curve that is nearest of all, not only nearest in its neighbourhood. Of
    /// several equally near, one of them; of two parameters of a point where the curve closes, one.
    /// Returns non-zero; 0 with an unset result where the curve is invalid or has no segment, or
    /// the point is unset, NaN or has coordinates beyond 1e100.
    ///
    /// A piece is divided into some 10,000 parts at most, all pieces together into as many and 100
    /// for each. A curve on a surface may need more to prove its nearest point, where it winds
    /// around a cylinder or sphere ten thousand times; what is found then is the nearest of 128
    /// even steps and their neighbourhoods. Boxes and polygons of one without end have those steps.
    int closest_point(const Point& point, ngkCurvePoint<Dimension>& nearest) const;
    ngkCurvePoint<Dimension> closest_point(const Point& point) const;

    /// The same with a parameter near which the nearest point is expected. The search begins there:
    /// of equally near points it is the one there, and where the point is on the curve, within
    /// rounding, nothing else is looked at. A parameter that is not in the range changes nothing.
    ngkCurvePoint<Dimension> closest_point(const Point& point, const ngkT& expected) const;

    /// A polygon that follows the curve closely enough, and for each of its points the fraction of
    /// the range; the first is 0, the last 1. Both are emptied first. Returns non-zero; 0 where the
    /// curve is invalid, has no segment or no end.
    int polygonize(const ngkPolygonizeTRP3& fineness, ngkPolyline<Dimension>& polygon,
                   doublecoDynArr& fractions) const;

    /// The polygon without parameters, empty on failure.
    ngkPolyline<Dimension> curve_polygon(const ngkPolygonizeTRP3& fineness) const;

    /// The length, by adaptive quadrature to that part of it; infinite for lines without an end, 0
    /// for an invalid curve and one without segments.
    double length(double relative_tolerance = 1e-12) const;

    /// The smallest box along the axes. Empty on failure, and for lines without an end.
    Box bounding_box() const;

    // What the kernel is built on; callers have no need of it.

    /// The point and its derivatives. `t` is in the range of a valid curve.
    virtual nmk_ngk::Vec<Dimension> point_at(const ngkT& t) const = 0;
    virtual nmk_ngk::Jet<Dimension> jet_at(const ngkT& t) const = 0;

    /// No point of a valid curve is further than this from the origin; of lines without an end only
    /// the start counts. May be larger than need be, and infinite.
    virtual double extent() const;

    /// Calls the visitor for each smooth piece of a valid curve, from first to last or back; the
    /// pieces themselves are the same.
    virtual void visit_pieces(nmk_ngk::PieceVisitor<Dimension>& visitor,
                              nmk_ngk::PieceOrder order) const = 0;

  protected:
    ngkCurve() = default;
    ngkCurve(const ngkCurve&) = default;
    ngkCurve& operator=(const ngkCurve&) = default;

    void set_valid(bool is_valid) noexcept { m_is_valid = is_valid; }

  private:
    bool m_is_valid = false;
};

extern template class ngkCurve<2>;
extern template class ngkCurve<3>;

using ngkCurve2 = ngkCurve<2>;
using ngkCurve3 = ngkCurve<3>;
using ngkCurvePtr2 = ngkCurve2::Ptr;
using ngkCurvePtr3 = ngkCurve3::Ptr;

#pragma GCC visibility pop
