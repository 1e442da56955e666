// ngkPolygonizeTRP3: how closely a polygon has to follow a curve.
#pragma once

class ngkPolygonizeTRP3 {
  public:
    /// `chord_tolerance`: no point of the curve may be further than this from its chord, in the
    /// unit of the coordinates. Anything that is not above 0 asks for the finest polygon.
    explicit ngkPolygonizeTRP3(double chord_tolerance) noexcept
        : m_chord_tolerance(chord_tolerance) {}

    double chord_tolerance() const noexcept { return m_chord_tolerance; }

    /// A polygon is never finer than this part of the extent of the curve, so that making one ends
    /// and fits into memory whatever is asked for: some 100,000 points for a full circle.
    static constexpr double finest_part_of_extent = 1e-10;

  private:
    double m_chord_tolerance;
};
