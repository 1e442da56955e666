// ReversedPiece: a piece that runs through another backwards, over the mirrored range.
//
// A piece that covers a part of its segment only is mirrored within the segment, so that all pieces
// of a segment stay in one range.
#pragma once

#include "Piece.h"

namespace nmk_ngk {

/// The range of a segment that runs backwards: its own, or that of the negative values where it has
/// no end.
inline ngkRange mirrored(const ngkRange& range) noexcept {
    const bool is_bounded = std::isfinite(range.low) && std::isfinite(range.high);
    return is_bounded ? range : ngkRange{-range.high, -range.low};
}

/// The value in the mirrored range where the segment itself has `value`; ends become ends exactly.
/// Also the other way round.
inline double mirrored(const ngkRange& range, double value) noexcept {
    if (!std::isfinite(range.low) || !std::isfinite(range.high)) return -value;
    if (value == range.low) return range.high;
    if (value == range.high) return range.low;
    return std::clamp(range.low + (range.high - value), range.low, range.high);
}

template <int Dimension>
class ReversedPiece final : public Piece<Dimension> {
  public:
    using typename Piece<Dimension>::V;

    /// The piece has to outlive this one. `segment` is the range of the segment it belongs to.
    ReversedPiece(const Piece<Dimension>& piece, const ngkRange& segment) noexcept
        : Piece<Dimension>(
              {mirrored(segment, piece.range().high), mirrored(segment, piece.range().low)}),
          m_piece(piece),
          m_segment(segment) {}

    V point(double value) const override { return m_piece.point(inside(value)); }
    Jet<Dimension> jet(double value) const override {
        Jet<Dimension> jet = m_piece.jet(inside(value));
        jet.first *= -1.0;
        return jet;
    }
    double speed(double from, double to) const override {
        return m_piece.speed(inside(to), inside(from));
    }
    double bend(double from, double to) const override {
        return m_piece.bend(inside(to), inside(from));
    }
    double sagitta(double from, double to) const override {
        return m_piece.sagitta(inside(to), inside(from));
    }
    V reach(double from, double to) const override {
        return m_piece.reach(inside(to), inside(from));
    }
    double box_error() const override { return m_piece.box_error(); }
    double length(double relative_tolerance, PartsLeft& parts_left) const override {
        return m_piece.length(relative_tolerance, parts_left);
    }

    void find_nearest(Nearest<Dimension>& nearest, int segment) const override {
        const double before = nearest.square();
        m_piece.find_nearest(nearest, segment);
        if (nearest.square() < before) nearest.set_value(mirrored(m_segment, nearest.t().value));
    }

    void visit_image(const Affine<Dimension>& map, int segment,
                     PieceVisitor<Dimension>& visitor) const override {
        const auto visit = [&](const Piece<Dimension>& image, int image_segment) {
            visitor.visit(ReversedPiece(image, m_segment), image_segment);
        };
        VisitWith<Dimension, decltype(visit)> reversed(visit);
        m_piece.visit_image(map, segment, reversed);
    }

  private:
    /// The value of the piece inside; within its range also where the mirroring was rounded.
    double inside(double value) const noexcept {
        const auto [low, high] = m_piece.range();
        if (value == this->range().low) return high;
        if (value == this->range().high) return low;
        return std::clamp(mirrored(m_segment, value), low, high);
    }

    const Piece<Dimension>& m_piece;
    ngkRange m_segment;
};

}  // namespace nmk_ngk
