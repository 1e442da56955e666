// How much work a nearest point may take where bounds decide nothing: counted, not timed.
#include <gtest/gtest.h>

#include <limits>
#include <numbers>

#include "ngk/plain_curve.h"
#include "ngk/sample_curves.h"

namespace {

// What the kernel states: parts of each piece, and beyond them of all together.
constexpr int parts_of_piece = 100;
constexpr int parts_of_curve = 10000;

/// Each part is halved, and both halves are bounded.
constexpr int bounds_for_parts(int parts) { return 2 * parts + 2; }

/// Another surface, which counts how often its derivatives are bounded.
class CountedSurf : public ngkSurf {
  public:
    CountedSurf(const ngkSurfPtr& surface, int& count) : m_surface(surface), m_count(count) {
        set_valid(surface->is_valid());
    }

    ngkRange u_range() const noexcept override { return m_surface->u_range(); }
    ngkRange v_range() const noexcept override { return m_surface->v_range(); }
    nmk_ngk::SurfaceJet jet_at(double u, double v) const override {
        return m_surface->jet_at(u, v);
    }
    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override {
        ++m_count;
        return m_surface->bounds_over(rectangle);
    }

  private:
    ngkSurfPtr m_surface;
    int& m_count;
};

/// A plane that does not say how much it bends, so that no bound ever decides early.
class VaguePlane : public ngkPlaneSurf {
  public:
    VaguePlane() : ngkPlaneSurf(giWorkplane3()) {}

    nmk_ngk::SurfaceBounds bounds_over(const giBox2& rectangle) const override {
        nmk_ngk::SurfaceBounds bounds = ngkPlaneSurf::bounds_over(rectangle);
        bounds.uu = bounds.uv = bounds.vv = std::numeric_limits<double>::infinity();
        return bounds;
    }
};

int bounds_for(const ngkCurve3& curve, const giPoint3& query, int& count) {
    count = 0;
    EXPECT_TRUE(curve.closest_point(query).is_set());
    return count;
}

/// A line to and fro over so many radians of longitude.
ngkCurvePtr2 winding_line(double radians, int segments) {
    std::vector<giPoint2> points;
    for (int i = 0; i <= segments; ++i)
        points.emplace_back(i % 2 == 0 ? radians : -radians, 0.5 * (i % 3) - 0.5);
    return ngkCurvePtr2(new ngkPolyline2(points));
}

std::vector<ngkSurfPtr> round_surfaces() {
    return {ngkSurfPtr(new ngkSphereSurf(sample_curves::slanted(), 1.5)),
            ngkSurfPtr(new ngkCylinderSurf(sample_curves::slanted(), 1.5))};
}

}  // namespace

TEST(ngkCurveOnSurf3_closest_point, ends_where_a_curve_winds_around_a_surface_without_end) {
    for (const ngkSurfPtr& surface : round_surfaces()) {
        for (const double radians : {1e4, 1e8, 1e45, 1e90}) {
            int count = 0;
            const ngkCurveOnSurf3 curve(winding_line(radians, 2),
                                        ngkSurfPtr(new CountedSurf(surface, count)));
            ASSERT_TRUE(curve.is_valid());
            const int bounds = bounds_for(curve, giPoint3(0.1, 0.2, 0.3), count);
            EXPECT_LE(bounds,
                      2 * bounds_for_parts(parts_of_piece) + bounds_for_parts(parts_of_curve))
                << radians;
        }
    }
}

TEST(ngkCurveOnSurf3_closest_point, does_not_divide_what_no_number_of_parts_makes_small) {
    for (const ngkSurfPtr& surface : round_surfaces()) {
        int count = 0;
        const ngkCurveOnSurf3 curve(winding_line(1e45, 2),
                                    ngkSurfPtr(new CountedSurf(surface, count)));
        const int bounds = bounds_for(curve, giPoint3(0.1, 0.2, 0.3), count);
        EXPECT_LE(bounds, 2);
        EXPECT_LE(curve.closest_point(giPoint3(0.1, 0.2, 0.3)).distance, 4.0);
    }
}

TEST(ngkCurveOnSurf3, is_bounded_and_made_a_polygon_in_even_steps_where_it_winds_without_end) {
    for (const ngkSurfPtr& surface : round_surfaces()) {
        int count = 0;
        const ngkCurveOnSurf3 curve(winding_line(1e45, 4),
                                    ngkSurfPtr(new CountedSurf(surface, count)));
        count = 0;
        EXPECT_FALSE(curve.bounding_box().is_empty());
        const int points = curve.curve_polygon(ngkPolygonizeTRP3(1e-3)).point_count();
        EXPECT_GT(points, 4 * 100);
        EXPECT_LT(points, 4 * 200);
        EXPECT_LT(count, 50);
    }
}

TEST(ngkCurveOnSurf3_closest_point, is_exact_for_a_point_beside_the_start_at_the_origin) {
    const ngkCurveOnSurf3 curve(
        ngkCurvePtr2(new ngkBezCurve2(std::vector<giPoint2>{{0, 0}, {1, 0}, {1, 1}, {0, 1}})),
        ngkSurfPtr(new ngkPlaneSurf(giWorkplane3())));
    for (const double x : {1e-3, 1e-9, 1e-12}) {
        const ngkCurvePoint3 nearest = curve.closest_point(giPoint3(x, 0, 0));
        EXPECT_LT(nearest.distance, x * x);
        EXPECT_GT(nearest.t.value, 0.0);
    }
}

TEST(ngkCurveOnSurf3_closest_point, has_pieces_share_what_they_take_beyond_their_own_parts) {
    int count = 0;
    const int segments = 30;
    const ngkCurveOnSurf3 curve(winding_line(1e7, segments),
                                ngkSurfPtr(new CountedSurf(round_surfaces().front(), count)));
    const int bounds = bounds_for(curve, giPoint3(0.1, 0.2, 0.3), count);
    EXPECT_GT(bounds, bounds_for_parts(parts_of_curve) + segments * parts_of_piece);
    EXPECT_LE(bounds,
              segments * bounds_for_parts(parts_of_piece) + bounds_for_parts(parts_of_curve));
}

TEST(ngkCurveOnSurf3_closest_point, counts_the_parts_of_a_curve_within_other_curves) {
    int count = 0;
    ngkCurvePtr3 curve(new ngkCurveOnSurf3(
        winding_line(1e7, 12), ngkSurfPtr(new CountedSurf(round_surfaces().front(), count))));
    curve = ngkCurvePtr3(new ngkReverseCurve3(curve));
    curve = ngkCurvePtr3(new ngkTransformedCurve3(curve, sample_curves::stretch(giXform3())));
    curve = ngkCurvePtr3(new ngkReverseCurve3(curve));
    ASSERT_TRUE(curve->is_valid());
    EXPECT_LE(bounds_for(*curve, giPoint3(0.1, 0.2, 0.3), count),
              12 * bounds_for_parts(parts_of_piece) + bounds_for_parts(parts_of_curve));
}

TEST(ngkCurveOnSurf3_closest_point, of_an_ordinary_curve_is_never_near_the_limit) {
    std::vector<ngkSurfPtr> surfaces = round_surfaces();
    surfaces.emplace_back(new ngkPlaneSurf(sample_curves::slanted()));
    for (const bool rational : {false, true})
        surfaces.push_back(sample_curves::nurbs_surface(rational));
    for (const ngkSurfPtr& surface : surfaces) {
        int count = 0;
        const ngkCurveOnSurf3 curve(sample_curves::plane_curve(),
                                    ngkSurfPtr(new CountedSurf(surface, count)));
        ASSERT_TRUE(curve.is_valid());
        for (const giPoint3& query : sample_curves::random_points<3>(500, 71))
            EXPECT_LT(bounds_for(curve, query, count), bounds_for_parts(parts_of_curve) / 5);
    }
}

TEST(ngkCurveOnSurf3_closest_point, finds_the_nearest_of_even_steps_where_no_bound_decides) {
    for (unsigned seed = 1; seed <= 10; ++seed) {
        const ngkCurvePtr2 flat(new ngkBezCurve2(sample_curves::random_points<2>(12, seed)));
        const ngkCurveOnSurf3 vague(flat, ngkSurfPtr(new VaguePlane));
        const ngkCurveOnSurf3 known(flat, ngkSurfPtr(new ngkPlaneSurf(giWorkplane3())));
        ASSERT_TRUE(vague.is_valid());
        for (const giPoint3& query : sample_curves::random_points<3>(5, 100 + seed))
            EXPECT_NEAR(vague.closest_point(query).distance, known.closest_point(query).distance,
                        1e-9)
                << seed;
    }
}

TEST(ngkCurveOnSurf3_closest_point, takes_no_part_of_a_curve_that_stays_where_bounds_are_infinite) {
    int count = 0;
    const ngkCurvePtr2 point(new ngkBezCurve2(std::vector<giPoint2>{{0.5, 0.5}, {0.5, 0.5}}));
    const ngkCurveOnSurf3 curve(point,
                                ngkSurfPtr(new CountedSurf(ngkSurfPtr(new VaguePlane), count)));
    ASSERT_TRUE(curve.is_valid());
    EXPECT_LE(bounds_for(curve, giPoint3(0.1, 0.2, 0.3), count), 2);
}

TEST(ngkCurveOnSurf3_closest_point, of_a_point_that_is_equally_far_from_all_is_as_far_as_any) {
    const ngkCurveOnSurf3 circle(ngkCurvePtr2(new ngkCircle2(giPoint2(0, 0), 2.0)),
                                 ngkSurfPtr(new ngkPlaneSurf(giWorkplane3())));
    EXPECT_NEAR(circle.closest_point(giPoint3(0, 0, 0)).distance, 2.0, 1e-15);
}
