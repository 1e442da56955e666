// nmkNgkArcLengthPositions: many points of one curve at given lengths.
//
// The curve is made a polygon once, and the lengths up to its points are kept, so that each
// position takes a search in them and one for the nearest point of the curve, which begins between
// the parameters of the polygon's points on both sides. The results are those
// of nmkNgkPolylineUtils::get_arc_length_position to the last bit.
#pragma once

#include <ngk/ngkCurve.h>
#include <ngk/ngkPolyline.h>
#include <nmktoolbox/export.h>

#include <vector>

class NMKTOOLBOX_EXPORT nmkNgkArcLengthPositions {
  public:
    /// Shares the curve.
    ///
    ///   forward    0 to measure from the end of the curve
    ///   tolerance  how closely the polygon follows the curve, a length
    nmkNgkArcLengthPositions(const ngkCurvePtr3& curve, int forward, double tolerance);

    /// The length of the polygon; 0.0 where the curve cannot be measured.
    double length() const noexcept;

    /// The point at that length and its parameter on the curve; unset, with segment -1, beyond the
    /// end.
    void find(double distance, giPoint3& point, ngkT& parameter) const;

  private:
    ngkCurvePtr3 m_curve;
    bool m_is_forward;
    ngkPolyline3 m_polygon;
    doublecoDynArr m_fractions;     // of the range that was measured, at each point of the polygon
    std::vector<double> m_lengths;  // up to each point of the polygon
};
