#include <ngk/ngkNurbCurve.h>

#include <gtest/gtest.h>

#include "ngk/plain_curve.h"
#include "ngk/sample_curves.h"

namespace {

using nmk_ngk::Vec;
using plain_curve::at;

std::vector<double> some_knots(int degree, int points, std::mt19937& random) {
    std::vector<double> knots;
    double knot = -1.0;
    for (int i = 0; i < points + degree + 1; ++i) {
        // Some repeat, but never the whole of the range.
        knot += random() % 4 == 0 ? 0.0 : 0.25 * double(1 + random() % 8);
        knots.push_back(knot);
    }
    return knots;
}

}  // namespace

TEST(ngkNurbCurve, agrees_with_de_boor_for_every_degree) {
    std::mt19937 random(17);
    int valid = 0;
    for (int degree = 1; degree <= ngk_max_degree; ++degree) {
        for (int round = 0; round < 8; ++round) {
            const int count = degree + 1 + static_cast<int>(random() % 12);
            const std::vector<giPoint3> points =
                sample_curves::random_points<3>(count, unsigned(random()));
            const std::vector<double> knots = some_knots(degree, count, random);
            const ngkNurbCurve3 curve(degree, knots, points);
            if (!curve.is_valid()) continue;
            ++valid;
            std::vector<Vec<3>> vecs;
            for (const giPoint3& point : points) vecs.push_back(nmk_ngk::vec_of(point));
            const auto [low, high] = curve.range(0);
            for (int i = 0; i < 20; ++i) {
                const double u = low + (high - low) * i / 20.0;
                const Vec<3> plain = plain_curve::nurbs<Vec<3>>(degree, knots, vecs, u);
                EXPECT_LE((curve.point_at(ngkT(0, u)) - plain).norm(), 1e-11 * (1 + plain.norm()))
                    << degree << ' ' << u;
            }
        }
    }
    EXPECT_GT(valid, 100);
}

TEST(ngkNurbCurve, stays_where_it_is_when_a_knot_is_inserted) {
    for (const bool rational : {false, true}) {
        const coPrf<const ngkNurbCurve3> curve(
            dynamic_cast<const ngkNurbCurve3*>(sample_curves::Maker<3>::nurbs(3, 9, 5, rational)));
        coPrf<const ngkNurbCurve3> finer = curve;
        for (const double knot : {0.5, 0.5, 0.5, 1.0, 1.0, 5.999}) {
            const auto next = finer->insert_knot(knot);
            ASSERT_TRUE(next && next->is_valid()) << knot;
            EXPECT_EQ(next->point_count(), finer->point_count() + 1);
            finer = next;
            for (int i = 0; i <= 60; ++i)
                EXPECT_LE((at(*finer, i / 60.0) - at(*curve, i / 60.0)).norm(), 1e-14);
        }
        EXPECT_FALSE(finer->insert_knot(0.5)) << "three times already";
        EXPECT_FALSE(finer->insert_knot(0.0));
        EXPECT_FALSE(finer->insert_knot(6.0));
        EXPECT_FALSE(finer->insert_knot(std::numeric_limits<double>::quiet_NaN()));
    }
}

TEST(ngkNurbCurve, is_its_bezier_curves) {
    const coPrf<const ngkNurbCurve3> curve(
        dynamic_cast<const ngkNurbCurve3*>(sample_curves::Maker<3>::nurbs(4, 9, 5, true)));
    const auto pieces = curve->bezier_curves();
    ASSERT_EQ(pieces.size(), 5U);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        for (int j = 0; j <= 10; ++j) {
            const double fraction = (double(i) + j / 10.0) / 5.0;
            EXPECT_LE((at(*pieces[i], j / 10.0) - at(*curve, fraction)).norm(), 1e-14);
        }
    }
}

TEST(ngkNurbCurve, refuses_knots_and_counts_that_do_not_fit) {
    const std::vector<giPoint3> points = sample_curves::random_points<3>(5, 1);
    const std::vector<double> good = {0, 0, 0, 1, 2, 3, 3, 3};
    const auto valid = [&](int degree, const std::vector<double>& knots,
                           const std::vector<double>& weights) {
        return ngkNurbCurve3(degree, knots, points, weights).is_valid();
    };
    EXPECT_TRUE(valid(2, good, {}));
    EXPECT_TRUE(valid(2, {0, 0, 0, 1, 1, 3, 3, 3}, {}));
    EXPECT_FALSE(valid(1, good, {}));
    EXPECT_FALSE(valid(3, good, {}));
    EXPECT_FALSE(valid(0, good, {}));
    EXPECT_FALSE(valid(26, good, {}));
    EXPECT_FALSE(valid(2, {0, 0, 0, 2, 1, 3, 3, 3}, {})) << "descending";
    EXPECT_FALSE(valid(2, {0, 1, 1, 1, 1, 1, 2, 3}, {})) << "an empty range";
    EXPECT_FALSE(valid(2, {0, 0, 0, 1, 1 + 1e-15, 3, 3, 3}, {})) << "an interval without digits";
    EXPECT_FALSE(valid(2, good, {1, 1, 1, 1})) << "a weight missing";
    EXPECT_FALSE(valid(2, good, {1, 1, 0, 1, 1}));
    EXPECT_FALSE(valid(2, good, {1, 1, -1, 1, 1}));
    EXPECT_TRUE(valid(2, good, {1, 1, 2, 1, 1}));
    EXPECT_FALSE(ngkNurbCurve3(1, std::vector<double>{0, 0, 1, 1, 2, 2}, std::span(points).first(4))
                     .is_valid())
        << "torn apart at 1";
}
