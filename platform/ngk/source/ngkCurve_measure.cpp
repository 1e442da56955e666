// The length of a curve, and the box that it fills.
#include <ngk/ngkCurve.h>

#include "Piece.h"
#include "arc_length.h"
#include "max_parts.h"

namespace nmk_ngk {

namespace {

// What rounding can do to a coordinate, as a part of its size.
constexpr double coordinate_rounding = 1e-15;
constexpr int max_box_halvings = 50;

template <int Dimension>
class BoxMaker {
  public:
    void add_piece(const Piece<Dimension>& piece) {
        const auto [low, high] = piece.range();
        const Vec<Dimension> start = piece.point(low);
        const Vec<Dimension> end = piece.point(high);
        add(start);
        add(end);
        m_rounding = piece.box_error() * ((end - start).norm() + piece.sagitta(low, high)) +
                     coordinate_rounding * piece.size();
        if (is_beyond_bounds(piece, piece.size()))
            return for_even_steps(piece, [&](double value) { add(piece.point(value)); });
        m_parts_left = max_parts;
        add_part(piece, low, start, high, end, max_box_halvings);
    }

    typename ngkSpace<Dimension>::Box box() const {
        if (m_is_empty) return {};
        typename ngkSpace<Dimension>::Box box;
        box.add(point_of(m_low));
        box.add(point_of(m_high));
        return box;
    }

  private:
    void add(const Vec<Dimension>& point) {
        for (int i = 0; i < Dimension; ++i) {
            m_low[i] = m_is_empty ? point[i] : std::min(m_low[i], point[i]);
            m_high[i] = m_is_empty ? point[i] : std::max(m_high[i], point[i]);
        }
        m_is_empty = false;
    }

    /// Whether a part that reaches so far beyond its ends may leave the box.
    bool may_leave(const Vec<Dimension>& start, const Vec<Dimension>& end,
                   const Vec<Dimension>& reach) const {
        for (int i = 0; i < Dimension; ++i) {
            if (std::min(start[i], end[i]) - reach[i] < m_low[i] - m_rounding) return true;
            if (std::max(start[i], end[i]) + reach[i] > m_high[i] + m_rounding) return true;
        }
        return false;
    }

    void add_part(const Piece<Dimension>& piece, double low, const Vec<Dimension>& start,
                  double high, const Vec<Dimension>& end, int halvings) {
        const double middle = low + (high - low) / 2.0;
        if (halvings == 0 || !(low < middle && middle < high)) return;
        if (m_parts_left-- <= 0 || !may_leave(start, end, piece.reach(low, high))) return;
        const Vec<Dimension> point = piece.point(middle);
        add(point);
        add_part(piece, low, start, middle, point, halvings - 1);
        add_part(piece, middle, point, high, end, halvings - 1);
    }

    bool m_is_empty = true;
    Vec<Dimension> m_low{};
    Vec<Dimension> m_high{};
    double m_rounding = 0.0;
    int m_parts_left = 0;
};

}  // namespace

}  // namespace nmk_ngk

template <int Dimension>
double ngkCurve<Dimension>::extent() const {
    double most = 0.0;
    nmk_ngk::for_each_piece<Dimension>(*this, [&](const nmk_ngk::Piece<Dimension>& piece, int) {
        const double low = std::isfinite(piece.range().low) ? piece.range().low : 0.0;
        const double high = std::isfinite(piece.range().high) ? piece.range().high : low;
        // A piece is not further from its start than its speed allows.
        const double here = piece.point(low).norm() + piece.speed(low, high) * (high - low);
        most = here >= 0.0 ? std::max(most, here) : std::numeric_limits<double>::infinity();
    });
    return most;
}

template <int Dimension>
double ngkCurve<Dimension>::length(double relative_tolerance) const {
    if (!m_is_valid) return 0.0;
    double sum = 0.0;
    nmk_ngk::PartsLeft parts_left(nmk_ngk::length_parts_of_piece, nmk_ngk::length_parts_of_curve);
    nmk_ngk::for_each_piece<Dimension>(*this, [&](const nmk_ngk::Piece<Dimension>& piece, int) {
        sum += piece.is_bounded() ? piece.length(relative_tolerance, parts_left)
                                  : std::numeric_limits<double>::infinity();
    });
    return sum;
}

template <int Dimension>
typename ngkCurve<Dimension>::Box ngkCurve<Dimension>::bounding_box() const {
    if (!m_is_valid) return Box();
    nmk_ngk::BoxMaker<Dimension> maker;
    bool is_bounded = true;
    nmk_ngk::for_each_piece<Dimension>(*this, [&](const nmk_ngk::Piece<Dimension>& piece, int) {
        is_bounded = is_bounded && piece.is_bounded();
        if (is_bounded) maker.add_piece(piece);
    });
    return is_bounded ? maker.box() : Box();
}

template double ngkCurve<2>::extent() const;
template double ngkCurve<3>::extent() const;
template double ngkCurve<2>::length(double) const;
template double ngkCurve<3>::length(double) const;
template giBox2 ngkCurve<2>::bounding_box() const;
template giBox3 ngkCurve<3>::bounding_box() const;
