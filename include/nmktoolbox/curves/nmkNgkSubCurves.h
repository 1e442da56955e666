// nmkNgkSubCurves: the simple pieces that a curve is made of.
//
// Pieces share the curves inside the one that was given; a curve that has no pieces is returned
// itself, as the same object. An empty handle and a composite without curves give none.
#pragma once

#include <ngk/ngkCurve.h>
#include <nmktoolbox/export.h>

#include <vector>

template <int Dimension>
class ngkCompCurve;
class ngkCurveOnSurf3;
template <int Dimension>
class ngkNurbCurve;
template <int Dimension>
class ngkPolyline;
template <int Dimension>
class ngkReverseCurve;
template <int Dimension>
class ngkTransformedCurve;

class NMKTOOLBOX_EXPORT nmkNgkSubCurves {
  public:
    /// The pieces of a composite curve, of each of its curves in turn; those of a reversed or
    /// transformed curve and of a curve on a surface, each wrapped in the same way again. Any other
    /// curve is its only piece, a polyline too.
    ///
    /// The pieces of a reversed curve are in the order of the curve inside, so the first of them is
    /// where it ends.
    static std::vector<ngkCurvePtr3> sub_curves(const ngkCurvePtr3& curve);

    /// The same in the plane, where a polyline gives a line for each pair of neighbours, equal ones
    /// too, and a NURBS curve a Bezier curve for each of its knot intervals.
    static std::vector<ngkCurvePtr2> sub_curves(const ngkCurvePtr2& curve);

  private:
    nmkNgkSubCurves() = delete;

    static std::vector<ngkCurvePtr3> sub_curves(const ngkReverseCurve<3>& curve);
    static std::vector<ngkCurvePtr3> sub_curves(const ngkTransformedCurve<3>& curve);
    static std::vector<ngkCurvePtr3> sub_curves(const ngkCompCurve<3>& curve);
    static std::vector<ngkCurvePtr3> sub_curves(const ngkCurveOnSurf3& curve);
    static std::vector<ngkCurvePtr3> sub_curves(const ngkPolyline<3>& curve);
    static std::vector<ngkCurvePtr2> sub_curves(const ngkReverseCurve<2>& curve);
    static std::vector<ngkCurvePtr2> sub_curves(const ngkTransformedCurve<2>& curve);
    static std::vector<ngkCurvePtr2> sub_curves(const ngkCompCurve<2>& curve);
    static std::vector<ngkCurvePtr2> sub_curves(const ngkPolyline<2>& curve);
    static std::vector<ngkCurvePtr2> sub_curves(const ngkNurbCurve<2>& curve);
};
