// BezierPiece: a Bezier curve over a range of values.
#pragma once

#include "Piece.h"
#include "bezier.h"

namespace nmk_ngk {

template <int Dimension>
class BezierPiece final : public Piece<Dimension> {
  public:
    using typename Piece<Dimension>::V;

    /// The control points have to outlive the piece.
    BezierPiece(const ngkRange& range, const BezierView<Dimension>& curve) noexcept
        : Piece<Dimension>(range), m_curve(curve) {}

    V point(double value) const override { return bezier_point(m_curve, part_at(value)); }
    Jet<Dimension> jet(double value) const override;
    V velocity(double value) const override;
    double speed(double from, double to) const override;
    double bend(double from, double to) const override;
    double sagitta(double from, double to) const override;
    V reach(double from, double to) const override;
    double box_error() const override { return exact_box_error; }
    void find_nearest(Nearest<Dimension>& nearest, int segment) const override;
    void visit_image(const Affine<Dimension>& map, int segment,
                     PieceVisitor<Dimension>& visitor) const override;

    /// Where in the curve's own range from 0 to 1 a value is, and back; the ends exactly.
    double part_at(double value) const noexcept {
        const auto [low, high] = this->range();
        return value == high ? 1.0 : (value - low) / (high - low);
    }
    double value_at(double part) const noexcept {
        const auto [low, high] = this->range();
        return part == 1.0 ? high : std::clamp(low + (high - low) * part, low, high);
    }

  private:
    BezierPoints<Dimension> between_values(double from, double to) const;
    double per_value() const noexcept { return 1.0 / (this->range().high - this->range().low); }

    BezierView<Dimension> m_curve;
};

extern template class BezierPiece<2>;
extern template class BezierPiece<3>;

}  // namespace nmk_ngk
