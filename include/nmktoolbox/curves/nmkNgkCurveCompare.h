// nmkNgkCurveCompare: whether two curves are the same within a tolerance.
#pragma once

#include <ngk/ngkCurve.h>
#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkNgkCurveCompare {
  public:
    /// The most intervals between samples. There are as many as the longer polygon is tolerances
    /// long; where the tolerance is so small that they would be more, samples lie further apart.
    static constexpr int max_samples = 2000000;

    /// How far apart two samples may be, in tolerances: twice what the polygons may be off, and a
    /// share for samples that are not at the same length.
    static constexpr double sample_tolerances = 3.0;

    /// 1 where the curves run through the same points in the same direction, else 0.
    ///
    ///   tolerance  a length: the ends are at most this apart, points at equal lengths along the
    ///              polygons at most three times as far
    ///   returns    1 for the same; 0 for different, for an empty handle, an invalid curve, one
    ///              without ends, and a tolerance that is below 0 or NaN
    ///
    /// Memory does not grow with the number of samples.
    static int compare(const ngkCurvePtr3& a, const ngkCurvePtr3& b, double tolerance);

  private:
    nmkNgkCurveCompare() = delete;
};
