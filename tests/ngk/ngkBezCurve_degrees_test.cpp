// Bezier curves of every degree, compared with de Casteljau's algorithm in 113 bits.
#include <gtest/gtest.h>

#include "ngk/plain_bezier128.h"
#include "ngk/sample_curves.h"

namespace {

void check(const ngkBezCurve3& curve) {
    for (int i = 0; i <= 40; ++i) {
        const double u = i / 40.0;
        const plain_bezier128::Jet expected = plain_bezier128::jet_at(curve, u);
        giPoint3 p;
        giVector3 d;
        giVector3 dd;
        ASSERT_NE(curve.evaluate(ngkT(0, u), p, d, dd), 0);
        // Derivatives are differences of points, times the degree once or twice.
        const double n = curve.degree();
        using plain_bezier128::error_of;
        EXPECT_LE(error_of(p.x, p.y, p.z, expected.point), 5e-15) << n << ", " << u;
        EXPECT_LE(error_of(d.x, d.y, d.z, expected.first), 5e-15 * n) << n << ", " << u;
        EXPECT_LE(error_of(dd.x, dd.y, dd.z, expected.second), 2e-14 * n * n) << n << ", " << u;
    }
}

}  // namespace

TEST(ngkBezCurve, of_every_degree_has_the_point_and_derivatives_of_de_casteljau_in_113_bits) {
    for (int degree = 1; degree <= ngk_max_degree; ++degree) {
        const auto points = sample_curves::random_points<3>(degree + 1, unsigned(degree));
        check(ngkBezCurve3(points));
        check(ngkBezCurve3(points, sample_curves::some_weights(points.size())));
    }
}
