// Piece: a smooth part of a segment, in the form in which the kernel measures it.
//
// Lines, ellipses and Bezier pieces know short ways; all others are measured by point, derivatives
// and bounds of these.
#pragma once

#include <ngk/ngkCurve.h>
#include <ngk/ngkT.h>

#include <limits>

#include "Affine.h"
#include "max_parts.h"

namespace nmk_ngk {

// How many parts the search for a nearest point divides pieces into: each on its own, and beyond
// that all together. An ordinary piece near the point takes some hundred, since bounds soon decide.
inline constexpr int nearest_parts_of_piece = 100;
inline constexpr int nearest_parts_of_curve = 10000;

/// The nearest point so far. `segment` is that of the piece that is searched.
template <int Dimension>
class Nearest {
  public:
    explicit Nearest(const Vec<Dimension>& query) noexcept : m_query(query) {}

    /// Takes a point of the curve where it is nearer; returns whether it was.
    bool consider(const Vec<Dimension>& point, int segment, double value) noexcept {
        const double square = (point - m_query).square();
        if (!(square < m_square)) return false;
        m_square = square;
        m_point = point;
        m_t = ngkT(segment, value);
        return true;
    }

    /// Replaces the value of the parameter: that of the same point on a piece around the one that
    /// was searched.
    void set_value(double value) noexcept { m_t.value = value; }

    PartsLeft& parts_left() noexcept { return m_parts_left; }

    const Vec<Dimension>& query() const noexcept { return m_query; }
    double square() const noexcept { return m_square; }
    const Vec<Dimension>& point() const noexcept { return m_point; }
    const ngkT& t() const noexcept { return m_t; }

  private:
    Vec<Dimension> m_query;
    double m_square = std::numeric_limits<double>::infinity();
    Vec<Dimension> m_point{};
    ngkT m_t;
    PartsLeft m_parts_left{nearest_parts_of_piece, nearest_parts_of_curve};
};

template <int Dimension>
class Piece;

template <int Dimension>
class PieceVisitor {
  public:
    virtual void visit(const Piece<Dimension>& piece, int segment) = 0;

  protected:
    ~PieceVisitor() = default;
};

/// Visits with a callable.
template <int Dimension, class Visit>
class VisitWith final : public PieceVisitor<Dimension> {
  public:
    explicit VisitWith(const Visit& visit_one) noexcept : m_visit(visit_one) {}
    void visit(const Piece<Dimension>& piece, int segment) override { m_visit(piece, segment); }

  private:
    const Visit& m_visit;
};

template <int Dimension, class Curve, class Visit>
void for_each_piece(const Curve& curve, const Visit& visit,
                    PieceOrder order = PieceOrder::forwards) {
    VisitWith<Dimension, Visit> visitor(visit);
    curve.visit_pieces(visitor, order);
}

/// The box_error() of pieces that know the reach along each axis.
inline constexpr double exact_box_error = 1e-15;

template <int Dimension>
class Piece {
  public:
    using V = Vec<Dimension>;

    explicit Piece(const ngkRange& range) noexcept : m_range(range) {}

    const ngkRange& range() const noexcept { return m_range; }
    bool is_bounded() const noexcept {
        return std::isfinite(m_range.low) && std::isfinite(m_range.high);
    }

    virtual V point(double value) const = 0;
    virtual Jet<Dimension> jet(double value) const = 0;
    virtual V velocity(double value) const { return jet(value).first; }

    /// Bounds of the lengths of first and second derivative from one value to another.
    virtual double speed(double from, double to) const = 0;
    virtual double bend(double from, double to) const = 0;

    /// No point between the two values is further than this from the chord.
    virtual double sagitta(double from, double to) const {
        const double step = to - from;
        return std::min(bend(from, to) * step * step / 8.0, speed(from, to) * step / 2.0);
    }

    /// How far the coordinates between the two values can be beyond those of both ends, one by one.
    virtual V reach(double from, double to) const {
        V all;
        all.c.fill(sagitta(from, to));
        return all;
    }

    /// To which part of the extent a box is worth computing: where reach() is the same along all
    /// axes, a curve in a plane along two of them could not be bounded more exactly in reasonable
    /// time.
    virtual double box_error() const { return 1e-8; }

    /// The largest coordinate of the ends: rounding is in proportion to it.
    double size() const {
        double most = 0.0;
        for (const double value : {m_range.low, m_range.high}) {
            for (const double x : point(value).c) most = std::max(most, std::abs(x));
        }
        return most;
    }

    /// Considers the point of the piece that is nearest to the query.
    virtual void find_nearest(Nearest<Dimension>& nearest, int segment) const;

    /// The length to about this part of it. Only of a bounded piece.
    virtual double length(double relative_tolerance, PartsLeft& parts_left) const;

    /// Calls the visitor for the image of the piece.
    virtual void visit_image(const Affine<Dimension>& map, int segment,
                             PieceVisitor<Dimension>& visitor) const = 0;

  protected:
    ~Piece() = default;

  private:
    ngkRange m_range;
};

/// Into how many even steps a piece is divided where bounds decide nothing.
inline constexpr int even_steps = 128;

/// Calls `visit` with each value between the ends.
template <int Dimension, class Visit>
void for_even_steps(const Piece<Dimension>& piece, const Visit& visit) {
    const auto [low, high] = piece.range();
    for (int i = 1; i < even_steps; ++i) visit(low + (high - low) * i / even_steps);
}

/// Whether the bound of the bounded piece is larger than all that is seen of it by so much that no
/// number of parts makes it small: one that winds around a surface without end. `size` is what is
/// known to be seen.
template <int Dimension>
bool is_beyond_bounds(const Piece<Dimension>& piece, double size) {
    constexpr double hopeless_sagitta = 1e8;  // in sizes
    const auto [low, high] = piece.range();
    const double sagitta = piece.sagitta(low, high);
    if (!(sagitta > hopeless_sagitta * size)) return false;
    const Vec<Dimension> start = piece.point(low);
    for_even_steps(
        piece, [&](double value) { size = std::max(size, (piece.point(value) - start).norm()); });
    return sagitta > hopeless_sagitta * size;
}

extern template class Piece<2>;
extern template class Piece<3>;

}  // namespace nmk_ngk
