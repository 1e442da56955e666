// LinePiece: a straight line, with or without ends.
#pragma once

#include "Piece.h"

namespace nmk_ngk {

template <int Dimension>
class LinePiece final : public Piece<Dimension> {
  public:
    using typename Piece<Dimension>::V;

    /// From value 0 at `start` to value 1 at `end`; the range may be longer.
    LinePiece(const ngkRange& range, const V& start, const V& end, const V& direction) noexcept
        : Piece<Dimension>(range), m_start(start), m_end(end), m_direction(direction) {}
    LinePiece(const V& start, const V& end) noexcept
        : LinePiece(ngkRange{0.0, 1.0}, start, end, end - start) {}

    V point(double value) const override {
        return value == 1.0 ? m_end : m_start + m_direction * value;
    }
    Jet<Dimension> jet(double value) const override { return {point(value), m_direction, V{}}; }
    double speed(double, double) const override { return m_direction.norm(); }
    double bend(double, double) const override { return 0.0; }
    double sagitta(double, double) const override { return 0.0; }
    double box_error() const override { return exact_box_error; }
    double length(double, PartsLeft&) const override { return (m_end - m_start).norm(); }

    void find_nearest(Nearest<Dimension>& nearest, int segment) const override {
        const auto [low, high] = this->range();
        const double square = m_direction.square();
        const double along = (nearest.query() - m_start).dot(m_direction);
        const double value = square > 0.0 ? std::clamp(along / square, low, high) : 0.0;
        nearest.consider(point(value), segment, value);
    }

    void visit_image(const Affine<Dimension>& map, int segment,
                     PieceVisitor<Dimension>& visitor) const override {
        visitor.visit(
            LinePiece(this->range(), map.point(m_start), map.point(m_end), map.vector(m_direction)),
            segment);
    }

  private:
    V m_start;
    V m_end;
    V m_direction;
};

}  // namespace nmk_ngk
