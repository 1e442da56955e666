// SurfacePiece: a piece of a curve of the plane, carried over to space by a surface.
#pragma once

#include <ngk/ngkSurf.h>

#include "Piece.h"

namespace nmk_ngk {

/// The derivatives of a surface point that moves as `uv` does.
inline Jet<3> carried_over(const SurfaceJet& surface, const Jet<2>& uv) {
    const double u = uv.first[0];
    const double v = uv.first[1];
    return {surface.point, surface.u * u + surface.v * v,
            (surface.uu * (u * u) + surface.uv * (2.0 * u * v) + surface.vv * (v * v)) +
                (surface.u * uv.second[0] + surface.v * uv.second[1])};
}

class SurfacePiece final : public Piece<3> {
  public:
    SurfacePiece(const Piece<2>& curve, const ngkSurf& surface) noexcept
        : Piece<3>(curve.range()), m_curve(curve), m_surface(surface) {}

    V point(double value) const override {
        const Vec<2> uv = m_curve.point(value);
        return m_surface.jet_at(uv[0], uv[1]).point;
    }
    Jet<3> jet(double value) const override {
        const Jet<2> uv = m_curve.jet(value);
        return carried_over(m_surface.jet_at(uv.point[0], uv.point[1]), uv);
    }
    double speed(double from, double to) const override {
        return speed(m_surface.bounds_over(rectangle(from, to)), from, to);
    }
    double bend(double from, double to) const override {
        return bend(m_surface.bounds_over(rectangle(from, to)), from, to);
    }
    double sagitta(double from, double to) const override {
        // The surface is bounded once for both.
        const SurfaceBounds bounds = m_surface.bounds_over(rectangle(from, to));
        const double step = to - from;
        return std::min(bend(bounds, from, to) * step * step / 8.0,
                        speed(bounds, from, to) * step / 2.0);
    }

    void visit_image(const Affine<3>& map, int segment, PieceVisitor<3>& visitor) const override;

  private:
    double speed(const SurfaceBounds& bounds, double from, double to) const {
        return std::sqrt(bounds.u * bounds.u + bounds.v * bounds.v) * m_curve.speed(from, to);
    }
    double bend(const SurfaceBounds& bounds, double from, double to) const {
        const double speed = m_curve.speed(from, to);
        // Where the plane's curve stays at a point, nothing moves, however the surface bends there.
        if (speed == 0.0) return 0.0;
        return (bounds.uu + 2.0 * bounds.uv + bounds.vv) * speed * speed +
               std::sqrt(bounds.u * bounds.u + bounds.v * bounds.v) * m_curve.bend(from, to);
    }

    giBox2 rectangle(double from, double to) const {
        const Vec<2> start = m_curve.point(from);
        const Vec<2> end = m_curve.point(to);
        const double sagitta = m_curve.sagitta(from, to);
        return giBox2({std::min(start[0], end[0]) - sagitta, std::min(start[1], end[1]) - sagitta},
                      {std::max(start[0], end[0]) + sagitta, std::max(start[1], end[1]) + sagitta});
    }

    const Piece<2>& m_curve;
    const ngkSurf& m_surface;
};

/// The image of any piece under an affine map.
class ImagePiece final : public Piece<3> {
  public:
    ImagePiece(const Piece<3>& piece, const Affine<3>& map) noexcept
        : Piece<3>(piece.range()), m_piece(piece), m_map(map), m_norm(map.norm()) {}

    V point(double value) const override { return m_map.point(m_piece.point(value)); }
    Jet<3> jet(double value) const override { return m_map.jet(m_piece.jet(value)); }
    double speed(double from, double to) const override { return m_norm * m_piece.speed(from, to); }
    double bend(double from, double to) const override { return m_norm * m_piece.bend(from, to); }
    double sagitta(double from, double to) const override {
        return m_norm * m_piece.sagitta(from, to);
    }
    void visit_image(const Affine<3>& map, int segment, PieceVisitor<3>& visitor) const override {
        visitor.visit(ImagePiece(*this, map), segment);
    }

  private:
    const Piece<3>& m_piece;
    const Affine<3>& m_map;
    double m_norm;
};

inline void SurfacePiece::visit_image(const Affine<3>& map, int segment,
                                      PieceVisitor<3>& visitor) const {
    visitor.visit(ImagePiece(*this, map), segment);
}

}  // namespace nmk_ngk
