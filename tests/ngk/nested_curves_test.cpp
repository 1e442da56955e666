// Curves within curves: what is asked of the outermost costs no more than its pieces and levels.
#include <gtest/gtest.h>

#include "ngk/sample_curves.h"

namespace {

/// A surface whose control points are counted each time that its derivatives are bounded.
class CountingSurf : public ngkPlaneSurf {
  public:
    explicit CountingSurf(int& count) : ngkPlaneSurf(giWorkplane3()), m_count(count) {}

    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override {
        ++m_count;
        return ngkPlaneSurf::bounds_over(rectangle);
    }

  private:
    int& m_count;
};

}  // namespace

TEST(ngkTransformedCurve, does_not_bound_a_surface_for_each_piece_of_a_curve_on_it) {
    int count = 0;
    const std::vector<giPoint2> points = sample_curves::random_points<2>(1000, 3);
    ngkCurvePtr3 curve(new ngkCurveOnSurf3(ngkCurvePtr2(new ngkPolyline2(points)),
                                           ngkSurfPtr(new CountingSurf(count))));
    for (int i = 0; i < 10; ++i) {
        curve = ngkCurvePtr3(new ngkTransformedCurve3(curve, giXform3()));
        curve = ngkCurvePtr3(new ngkReverseCurve3(curve));
    }
    EXPECT_TRUE(curve->is_valid());
    EXPECT_EQ(count, 1);
}

TEST(ngkCurve3, has_no_point_beyond_its_extent) {
    for (const auto& one : sample_curves::in_space()) {
        const double extent = one.curve->extent();
        EXPECT_TRUE(std::isfinite(extent)) << one.name;
        for (int i = 0; i <= 200; ++i) {
            giPoint3 point;
            ASSERT_NE(one.curve->evaluate(i / 200.0, point), 0);
            EXPECT_LE(nmk_ngk::vec_of(point).norm(), extent * (1.0 + 1e-12)) << one.name;
        }
    }
}

TEST(ngkTransformedCurve, is_invalid_where_its_image_could_be_too_large) {
    const ngkCurvePtr3 far(new ngkLine3(giPoint3(0, 0, 0), giPoint3(1e50, 0, 0)));
    EXPECT_FALSE(ngkTransformedCurve3(far, giXform3()).is_valid());
    const ngkCurvePtr3 near(new ngkLine3(giPoint3(0, 0, 0), giPoint3(1e48, 0, 0)));
    EXPECT_TRUE(ngkTransformedCurve3(near, giXform3()).is_valid());
    const ngkCurvePtr3 large(
        new ngkTransformedCurve3(near, giXform3(giXform3Scale, 1e20, 1.0, 1.0)));
    EXPECT_TRUE(large->is_valid());
    EXPECT_FALSE(ngkTransformedCurve3(large, giXform3()).is_valid());
    EXPECT_FALSE(ngkTransformedCurve3(near, giXform3(giXform3Scale, 1e50, 1.0, 1.0)).is_valid());
}
