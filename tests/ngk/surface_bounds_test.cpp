// The bounds of a surface's derivatives, compared with the derivatives at many points.
#include <gtest/gtest.h>

#include "ngk/sample_curves.h"

namespace {

std::vector<ngkSurfPtr> surfaces() {
    const std::array<giPoint3, 4> corners = {giPoint3(0, 0, 0), giPoint3(3, 0, 1),
                                             giPoint3(0, 2, -1), giPoint3(3, 3, 2)};
    return {ngkSurfPtr(new ngkPlaneSurf(sample_curves::slanted())),
            ngkSurfPtr(new ngkCylinderSurf(sample_curves::slanted(), 1.5)),
            ngkSurfPtr(new ngkSphereSurf(sample_curves::slanted(), 1.5)),
            ngkSurfPtr(new ngkBilinearSurf(corners)),
            sample_curves::nurbs_surface(false),
            sample_curves::nurbs_surface(true),
            sample_curves::nurbs_surface(false, 2)};
}

/// A Bezier surface of degree 3 whose points are at even distances, so that it is linear in u.
ngkSurfPtr even_surface() {
    std::vector<giPoint3> points;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 2; ++j) points.emplace_back(2.0 * i, j, 0.0);
    }
    return ngkSurfPtr(new ngkNurbSurf({3, {0, 0, 0, 0, 1, 1, 1, 1}}, {1, {0, 0, 1, 1}}, points));
}

/// Remembers the first rectangle over which it is bounded.
class WatchedPlane : public ngkPlaneSurf {
  public:
    explicit WatchedPlane(giBox2& first) : ngkPlaneSurf(giWorkplane3()), m_first(first) {}

    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override {
        if (m_first.is_empty()) m_first = rectangle;
        return ngkPlaneSurf::bounds_over(rectangle);
    }

  private:
    giBox2& m_first;
};

}  // namespace

TEST(ngkSurf, has_no_derivative_beyond_its_bounds) {
    for (const ngkSurfPtr& surface : surfaces()) {
        for (const giBox2& box : {giBox2({0, 0}, {1, 1}), giBox2({0.3, 0.2}, {0.4, 0.9})}) {
            const nmk_ngk::SurfaceBounds bounds = surface->bounds_over(box);
            for (int i = 0; i <= 400; ++i) {
                const int row = i / 20;
                const int column = i % 20;
                const double u = box.min().x + box.width() * column / 20.0;
                const double v = box.min().y + box.height() * row / 20.0;
                const nmk_ngk::SurfaceJet jet = surface->jet_at(u, v);
                const double slack = 1.0 + 1e-12;
                EXPECT_LE(jet.u.norm(), bounds.u * slack);
                EXPECT_LE(jet.v.norm(), bounds.v * slack);
                EXPECT_LE(jet.uu.norm(), bounds.uu * slack + 1e-9);
                EXPECT_LE(jet.uv.norm(), bounds.uv * slack + 1e-9);
                EXPECT_LE(jet.vv.norm(), bounds.vv * slack + 1e-9);
            }
        }
    }
}

TEST(ngkSurf, has_the_derivative_of_an_even_surface_as_its_bound) {
    const nmk_ngk::SurfaceBounds bounds = even_surface()->bounds_over(giBox2({0, 0}, {1, 1}));
    EXPECT_NEAR(bounds.u, 6.0, 1e-12);
    EXPECT_NEAR(bounds.v, 1.0, 1e-12);
    EXPECT_NEAR(bounds.uu, 0.0, 1e-12);
}

TEST(ngkCurveOnSurf3, is_bounded_over_all_of_the_rectangle_that_its_curve_fills) {
    giBox2 first;
    const std::vector<giPoint2> arch = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
    const ngkCurveOnSurf3 curve(ngkCurvePtr2(new ngkBezCurve2(arch)),
                                ngkSurfPtr(new WatchedPlane(first)));
    first = giBox2();
    EXPECT_TRUE(curve.closest_point(giPoint3(2, 2, 2)).is_set());
    EXPECT_GE(first.max().y, 0.75);
}
