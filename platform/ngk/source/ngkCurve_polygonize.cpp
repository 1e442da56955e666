// Polygons that follow a curve: each piece is halved until its bound from the chord is small
// enough.
#include <ngk/ngkCurve.h>
#include <ngk/ngkPolyline.h>

#include "Piece.h"
#include "max_parts.h"

namespace nmk_ngk {

namespace {

// Where the bound does not become smaller although a part is halved this often, the part is taken
// for its chord.
constexpr int max_depth = 50;

// What rounding can do to a distance from a chord, as a part of the coordinates.
constexpr double coordinate_rounding = 1e-13;

template <int Dimension>
class PolygonMaker {
  public:
    PolygonMaker(const ngkCurve<Dimension>& curve, double tolerance,
                 ngkPolyline<Dimension>& polygon, doublecoDynArr& fractions)
        : m_curve(curve), m_tolerance(tolerance), m_polygon(polygon), m_fractions(fractions) {}

    /// To be called for all pieces before the first is added: the finest polygon depends on the
    /// extent of all.
    void measure_piece(const Piece<Dimension>& piece) {
        const auto [low, high] = piece.range();
        const double extent =
            (piece.point(high) - piece.point(low)).norm() + piece.sagitta(low, high);
        m_finest = std::max({m_finest, extent * ngkPolygonizeTRP3::finest_part_of_extent,
                             coordinate_rounding * piece.size()});
    }

    void add_piece(const Piece<Dimension>& piece, int segment) {
        const auto [low, high] = piece.range();
        if (m_polygon.point_count() == 0) add(piece, segment, low);
        if (is_beyond_bounds(piece, piece.size())) {
            for_even_steps(piece, [&](double value) { add(piece, segment, value); });
            return add(piece, segment, high);
        }
        const double tolerance = m_tolerance > m_finest ? m_tolerance : m_finest;
        // A closed piece must not become a single point, so that a curved one has a vertex inside.
        const double middle = low + (high - low) / 2.0;
        if (piece.sagitta(low, high) > m_finest && low < middle && middle < high) {
            add_part(piece, segment, low, middle, tolerance, max_depth);
            add_part(piece, segment, middle, high, tolerance, max_depth);
        } else {
            add(piece, segment, high);
        }
    }

  private:
    void add_part(const Piece<Dimension>& piece, int segment, double low, double high,
                  double tolerance, int depth) {
        const double middle = low + (high - low) / 2.0;
        const bool is_done = depth == 0 || m_parts_left-- <= 0 || !(low < middle && middle < high);
        if (is_done || piece.sagitta(low, high) <= tolerance) return add(piece, segment, high);
        add_part(piece, segment, low, middle, tolerance, depth - 1);
        add_part(piece, segment, middle, high, tolerance, depth - 1);
    }

    void add(const Piece<Dimension>& piece, int segment, double value) {
        m_polygon.add_point(point_of(piece.point(value)));
        m_fractions.add(m_curve.fraction_at(ngkT(segment, value)));
    }

    const ngkCurve<Dimension>& m_curve;
    double m_tolerance;
    double m_finest = 0.0;
    int m_parts_left = max_parts;
    ngkPolyline<Dimension>& m_polygon;
    doublecoDynArr& m_fractions;
};

}  // namespace

}  // namespace nmk_ngk

template <int Dimension>
int ngkCurve<Dimension>::polygonize(const ngkPolygonizeTRP3& fineness,
                                    ngkPolyline<Dimension>& polygon,
                                    doublecoDynArr& fractions) const {
    polygon.clear();
    fractions.clear();
    if (!t_at(0.0).is_set() || !t_at(1.0).is_set()) return 0;
    nmk_ngk::PolygonMaker<Dimension> maker(*this, fineness.chord_tolerance(), polygon, fractions);
    using nmk_ngk::Piece;
    nmk_ngk::for_each_piece<Dimension>(
        *this, [&](const Piece<Dimension>& piece, int) { maker.measure_piece(piece); });
    nmk_ngk::for_each_piece<Dimension>(*this, [&](const Piece<Dimension>& piece, int segment) {
        maker.add_piece(piece, segment);
    });
    return 1;
}

template <int Dimension>
ngkPolyline<Dimension> ngkCurve<Dimension>::curve_polygon(const ngkPolygonizeTRP3& fineness) const {
    ngkPolyline<Dimension> polygon;
    doublecoDynArr fractions;
    polygonize(fineness, polygon, fractions);
    return polygon;
}

template int ngkCurve<2>::polygonize(const ngkPolygonizeTRP3&, ngkPolyline<2>&,
                                     doublecoDynArr&) const;
template int ngkCurve<3>::polygonize(const ngkPolygonizeTRP3&, ngkPolyline<3>&,
                                     doublecoDynArr&) const;
template ngkPolyline<2> ngkCurve<2>::curve_polygon(const ngkPolygonizeTRP3&) const;
template ngkPolyline<3> ngkCurve<3>::curve_polygon(const ngkPolygonizeTRP3&) const;
