// Curves compared with those of another geometry kernel.
#include "ngk/peer_kernel.h"

#include <gtest/gtest.h>

#include "ngk/plain_bezier128.h"
#include "ngk/sample_curves.h"

#if defined(NMK_WITH_PEER_KERNEL)

namespace {

/// How far the peer's results are from the true ones: with the degree it loses digits, in points
/// 4e-9 at degree 19 and 8e-6 at degree 25.
struct PeerError {
    double point = 0.0;
    double first = 0.0;
    double second = 0.0;
};

PeerError error_of_peer(const ngkBezCurve3& curve) {
    const Handle(Geom_Curve) peer = peer_kernel::curve_of(curve);
    PeerError error;
    for (int i = 0; i <= 40; ++i) {
        const plain_bezier128::Jet jet = plain_bezier128::jet_at(curve, i / 40.0);
        gp_Pnt p;
        gp_Vec d;
        gp_Vec dd;
        peer->D2(i / 40.0, p, d, dd);
        using plain_bezier128::error_of;
        error.point = std::max(error.point, error_of(p.X(), p.Y(), p.Z(), jet.point));
        error.first = std::max(error.first, error_of(d.X(), d.Y(), d.Z(), jet.first));
        error.second = std::max(error.second, error_of(dd.X(), dd.Y(), dd.Z(), jet.second));
    }
    return error;
}

template <class Curve>
void compare(const Curve& curve, const PeerError& error = {}) {
    const Handle(Geom_Curve) peer = peer_kernel::curve_of(curve);
    const auto [low, high] = curve.range(0);
    for (int i = 0; i <= 40; ++i) {
        const double value = i == 40 ? high : low + (high - low) * i / 40.0;
        giPoint3 point;
        giVector3 first;
        giVector3 second;
        ASSERT_NE(curve.evaluate(ngkT(0, value), point, first, second), 0);
        gp_Pnt peer_point;
        gp_Vec peer_first;
        gp_Vec peer_second;
        peer->D2(value, peer_point, peer_first, peer_second);
        const double scale = 1.0 + second.length();
        EXPECT_LE(peer_point.Distance(peer_kernel::point_of(point)), 1e-13 * scale + error.point);
        EXPECT_LE((peer_first - gp_Vec(first.x, first.y, first.z)).Magnitude(),
                  1e-11 * scale + error.first);
        // On a knot the second derivative may be that of either side.
        const bool is_knot = value == std::floor(value) && curve.degree() < 4;
        if (is_knot) continue;
        const gp_Vec ours(second.x, second.y, second.z);
        EXPECT_LE((peer_second - ours).Magnitude(), 1e-9 * scale + error.second);
    }
    // A length is the integral of the first derivative over a range of 1.
    EXPECT_NEAR(curve.length(), peer_kernel::length(peer, 1e-10),
                1e-7 * curve.length() + error.first);
    for (const giPoint3& query : sample_curves::random_points<3>(200, 5)) {
        // The point at their parameter, as it is here: theirs may be off, see PeerError.
        giPoint3 theirs;
        const double value = std::clamp(
            peer_kernel::closest_parameter(peer, peer_kernel::point_of(query)), low, high);
        ASSERT_NE(curve.evaluate(ngkT(0, value), theirs), 0);
        // Ours is never further. Theirs may be a local minimum, so the other bound is not tested.
        EXPECT_LE(curve.closest_point(query).distance,
                  query.distance(theirs) * (1.0 + 1e-12) + 1e-14);
    }
}

}  // namespace

TEST(ngkBezCurve, agrees_with_another_geometry_kernel) {
    for (const int count : {3, 4, 7}) {
        const auto points = sample_curves::random_points<3>(count, unsigned(count));
        compare(ngkBezCurve3(points));
        compare(ngkBezCurve3(points, sample_curves::some_weights(points.size())));
    }
}

TEST(ngkBezCurve, agrees_with_another_geometry_kernel_as_far_as_that_is_right) {
    for (const int count : {12, 20, 26}) {
        const auto points = sample_curves::random_points<3>(count, unsigned(count));
        const ngkBezCurve3 polynomial(points);
        const ngkBezCurve3 rational(points, sample_curves::some_weights(points.size()));
        compare(polynomial, error_of_peer(polynomial));
        compare(rational, error_of_peer(rational));
    }
}

TEST(ngkNurbCurve, agrees_with_another_geometry_kernel) {
    for (const int degree : {2, 3, 5}) {
        for (const bool rational : {false, true}) {
            const ngkCurvePtr3 curve(sample_curves::Maker<3>::nurbs(degree, 20, 4, rational));
            compare(dynamic_cast<const ngkNurbCurve3&>(*curve));
        }
    }
}

#else

TEST(ngkCurve3, agrees_with_another_geometry_kernel) {
    GTEST_SKIP() << "libocct-modeling-algorithms-dev is not installed";
}

#endif
