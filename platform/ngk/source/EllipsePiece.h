// EllipsePiece: centre + x cos(value) + y sin(value). A circle's image under an affine map is one.
#pragma once

#include <exactmath/exact_arctangent.h>
#include <exactmath/exact_sine.h>

#include <numbers>

#include "Piece.h"

namespace nmk_ngk {

inline constexpr double full_turn = 2.0 * std::numbers::pi;

template <int Dimension>
struct Ellipse {
    Vec<Dimension> centre;
    Vec<Dimension> x;
    Vec<Dimension> y;

    Vec<Dimension> point(double angle) const {
        return centre + (x * nmk_exact::exact_cos(angle) + y * nmk_exact::exact_sin(angle));
    }
    Jet<Dimension> jet(double angle) const {
        const double cosine = nmk_exact::exact_cos(angle);
        const double sine = nmk_exact::exact_sin(angle);
        const Vec<Dimension> from_centre = x * cosine + y * sine;
        return {centre + from_centre, y * cosine - x * sine, from_centre * -1.0};
    }
};

template <int Dimension>
class EllipsePiece final : public Piece<Dimension> {
  public:
    using typename Piece<Dimension>::V;

    /// `is_circle`: x and y are equally long and at a right angle.
    EllipsePiece(const ngkRange& range, const Ellipse<Dimension>& ellipse, const V& start,
                 const V& end, bool is_circle) noexcept
        : Piece<Dimension>(range),
          m_ellipse(ellipse),
          m_start(start),
          m_end(end),
          m_is_circle(is_circle) {}

    V point(double value) const override {
        if (value == this->range().low) return m_start;
        return value == this->range().high ? m_end : m_ellipse.point(value);
    }
    Jet<Dimension> jet(double value) const override {
        Jet<Dimension> jet = m_ellipse.jet(value);
        jet.point = point(value);
        return jet;
    }
    double speed(double, double) const override { return longest_radius(); }
    double bend(double, double) const override { return longest_radius(); }

    V reach(double from, double to) const override {
        const double step = to - from;
        V reach;
        for (int i = 0; i < Dimension; ++i)
            reach[i] =
                std::sqrt(m_ellipse.x[i] * m_ellipse.x[i] + m_ellipse.y[i] * m_ellipse.y[i]) *
                (step * step / 8.0);
        return reach;
    }
    double box_error() const override { return exact_box_error; }

    double length(double relative_tolerance, PartsLeft& parts_left) const override {
        if (!m_is_circle) return Piece<Dimension>::length(relative_tolerance, parts_left);
        return m_ellipse.x.norm() * (this->range().high - this->range().low);
    }

    void find_nearest(Nearest<Dimension>& nearest, int segment) const override {
        if (!m_is_circle) return Piece<Dimension>::find_nearest(nearest, segment);
        const auto [low, high] = this->range();
        nearest.consider(m_start, segment, low);
        nearest.consider(m_end, segment, high);
        const V from_centre = nearest.query() - m_ellipse.centre;
        const double width = from_centre.dot(m_ellipse.x);
        const double height = from_centre.dot(m_ellipse.y);
        const double angle = nmk_exact::exact_atan2(height, width);
        const double turned = angle + std::ceil((low - angle) / full_turn) * full_turn;
        if (turned > low && turned < high)
            nearest.consider(m_ellipse.point(turned), segment, turned);
    }

    void visit_image(const Affine<Dimension>& map, int segment,
                     PieceVisitor<Dimension>& visitor) const override {
        const Ellipse<Dimension> image = {map.point(m_ellipse.centre), map.vector(m_ellipse.x),
                                          map.vector(m_ellipse.y)};
        visitor.visit(EllipsePiece(this->range(), image, map.point(m_start), map.point(m_end),
                                   m_is_circle && looks_circular(image)),
                      segment);
    }

  private:
    // How far, as a part of the squared radius, axes may be from equally long and perpendicular.
    static constexpr double circle_rounding = 1e-14;

    static bool looks_circular(const Ellipse<Dimension>& image) noexcept {
        const double square = image.x.square();
        return std::abs(image.y.square() - square) <= circle_rounding * square &&
               std::abs(image.x.dot(image.y)) <= circle_rounding * square;
    }

    double longest_radius() const noexcept {
        return m_is_circle ? m_ellipse.x.norm()
                           : std::sqrt(m_ellipse.x.square() + m_ellipse.y.square());
    }

    Ellipse<Dimension> m_ellipse;
    V m_start;
    V m_end;
    bool m_is_circle;
};

}  // namespace nmk_ngk
