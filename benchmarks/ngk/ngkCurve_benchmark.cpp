// Benchmark: points, nearest points and lengths of a cubic Bezier curve and a NURBS curve of 20
// poles, beside bare loops and another geometry kernel; and whether a nearest point is ever only a
// local minimum.
//
// Where the other kernel is not installed, only the bare loops are peers. Its nearest points are
// not compared one by one: they may be local minima, and ours are never further.
#include "ngk/peer_kernel.h"

#include <ngk/ngkBezCurve.h>
#include <ngk/ngkNurbCurve.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <vector>

#include "ngk/sample_curves.h"
#include "stopwatch.h"

namespace {

using nmk_ngk::Vec;

const int evaluations = stopwatch::size(2000000, 2000);
const int queries = stopwatch::size(20000, 50);
const int scanned_queries = stopwatch::size(100000, 200);
constexpr int turns = 7;

std::vector<Vec<3>> vecs_of(const std::vector<giPoint3>& points) {
    std::vector<Vec<3>> vecs;
    for (const giPoint3& point : points) vecs.push_back(nmk_ngk::vec_of(point));
    return vecs;
}

/// A bare de Casteljau loop.
Vec<3> bare_bezier(const Vec<3>* points, double u) {
    Vec<3> row[4] = {points[0], points[1], points[2], points[3]};
    for (int count = 3; count > 0; --count) {
        for (int i = 0; i < count; ++i) row[i] = row[i] * (1.0 - u) + row[i + 1] * u;
    }
    return row[0];
}

/// A bare de Boor loop.
Vec<3> bare_nurbs(const std::vector<double>& knots, const std::vector<Vec<3>>& points, double u) {
    std::size_t k = 3;
    while (k + 1 < points.size() && knots[k + 1] <= u) ++k;
    Vec<3> row[4] = {points[k - 3], points[k - 2], points[k - 1], points[k]};
    for (std::size_t level = 1; level <= 3; ++level) {
        for (std::size_t j = 3; j >= level; --j) {
            const double low = knots[k - 3 + j];
            const double part = (u - low) / (knots[k + 1 + j - level] - low);
            row[j] = row[j - 1] * (1.0 - part) + row[j] * part;
        }
    }
    return row[3];
}

/// Sums of points agree to rounding only.
struct Sum {
    double value = 0.0;
    bool operator==(const Sum& other) const {
        return std::abs(value - other.value) <= 1e-9 * (1.0 + std::abs(value));
    }
};

template <class Bare>
bool measure_evaluation(const char* name, const ngkCurve3& curve, const Bare& bare) {
    const auto range = curve.range(0);
    const double low = range.low;
    const double step = (range.high - low) / evaluations;
    const auto ours = [&] {
        Sum sum;
        for (int i = 0; i < evaluations; ++i) {
            giPoint3 point;
            curve.evaluate(ngkT(0, low + i * step), point);
            sum.value += point.x + point.y + point.z;
        }
        return sum;
    };
    const auto peer = [&] {
        Sum sum;
        for (int i = 0; i < evaluations; ++i) {
            const Vec<3> point = bare(low + i * step);
            sum.value += point[0] + point[1] + point[2];
        }
        return sum;
    };
    const stopwatch::Taken taken = stopwatch::in_turns(turns, ours, peer);
    return stopwatch::report(name, taken.ours, taken.peer, 1.3, taken.same);
}

#if defined(NMK_WITH_PEER_KERNEL)
// The distance of the nearest point as the peer reports it, or of an end: those are not
// projections.
double peer_distance(const Handle(Geom_Curve) & curve, const gp_Pnt& query) {
    const double of_ends = std::min(query.Distance(curve->Value(curve->FirstParameter())),
                                    query.Distance(curve->Value(curve->LastParameter())));
    const GeomAPI_ProjectPointOnCurve projection(query, curve);
    return projection.NbPoints() > 0 ? std::min(of_ends, projection.LowerDistance()) : of_ends;
}

template <class Curve>
bool measure_closest(const char* name, const Curve& curve) {
    const auto points = sample_curves::random_points<3>(queries, 77);
    const Handle(Geom_Curve) peer_curve = peer_kernel::curve_of(curve);
    double ours_sum = 0.0;
    double peer_sum = 0.0;
    const stopwatch::Taken taken = stopwatch::in_turns(
        3,
        [&] {
            ours_sum = 0.0;
            for (const giPoint3& query : points) ours_sum += curve.closest_point(query).distance;
            return true;
        },
        [&] {
            peer_sum = 0.0;
            for (const giPoint3& query : points)
                peer_sum += peer_distance(peer_curve, peer_kernel::point_of(query));
            return true;
        });
    return stopwatch::report(name, taken.ours, taken.peer, 1.0,
                             ours_sum <= peer_sum * (1.0 + 1e-12));
}

template <class Curve>
bool measure_length(const char* name, const Curve& curve) {
    const Handle(Geom_Curve) peer_curve = peer_kernel::curve_of(curve);
    const int calls = stopwatch::size(20000, 10);
    double ours_length = 0.0;
    double peer_length = 0.0;
    const stopwatch::Taken taken = stopwatch::in_turns(
        3,
        [&] {
            for (int i = 0; i < calls; ++i) ours_length = curve.length(1e-9);
            return true;
        },
        [&] {
            for (int i = 0; i < calls; ++i) peer_length = peer_kernel::length(peer_curve, 1e-9);
            return true;
        });
    const bool same = std::abs(ours_length - peer_length) <= 1e-7 * ours_length;
    return stopwatch::report(name, taken.ours, taken.peer, 1.0, same);
}
#endif

/// How many of the queries found a point that is further than one of a dense scan.
int local_minima(const ngkCurve3& curve, unsigned seed, int count) {
    constexpr int steps = 500;
    std::vector<Vec<3>> scan;
    for (int i = 0; i <= steps; ++i) {
        giPoint3 point;
        curve.evaluate(static_cast<double>(i) / steps, point);
        scan.push_back(nmk_ngk::vec_of(point));
    }
    int found = 0;
    for (const giPoint3& query : sample_curves::random_points<3>(count, seed)) {
        double least = std::numeric_limits<double>::infinity();
        for (const Vec<3>& point : scan)
            least = std::min(least, (point - nmk_ngk::vec_of(query)).square());
        const double distance = curve.closest_point(query).distance;
        if (distance > std::sqrt(least) * (1.0 + 1e-12)) ++found;
    }
    return found;
}

/// A new random curve for each hundred queries.
bool compare_with_scans() {
    int found = 0;
    for (int i = 0; i < scanned_queries / 100; ++i) {
        const unsigned seed = 1000U + static_cast<unsigned>(i);
        const int count = 4 + i % 9;
        const ngkCurvePtr3 curve =
            i % 2 == 0
                ? ngkCurvePtr3(new ngkBezCurve3(
                      sample_curves::random_points<3>(count, seed),
                      i % 4 == 0 ? sample_curves::some_weights(static_cast<std::size_t>(count))
                                 : std::vector<double>()))
                : ngkCurvePtr3(sample_curves::Maker<3>::nurbs(1 + i % 5, 20, seed, i % 3 == 0));
        found += local_minima(*curve, seed + 1, 100);
    }
    std::printf("%d of %d nearest points further than one of a dense scan\n", found,
                scanned_queries);
    return found == 0;
}

}  // namespace

int main() {
    const std::vector<giPoint3> four = sample_curves::random_points<3>(4, 3);
    const std::vector<giPoint3> twenty = sample_curves::random_points<3>(20, 4);
    const std::vector<double> knots = sample_curves::clamped_knots(3, 20);
    const ngkBezCurve3 bezier(four);
    const ngkNurbCurve3 nurbs(3, knots, twenty);
    const std::vector<Vec<3>> four_vecs = vecs_of(four);
    const std::vector<Vec<3>> twenty_vecs = vecs_of(twenty);
    bool reached = measure_evaluation("evaluate, cubic Bezier", bezier,
                                      [&](double u) { return bare_bezier(four_vecs.data(), u); });
    reached &= measure_evaluation("evaluate, NURBS of 20 poles", nurbs,
                                  [&](double u) { return bare_nurbs(knots, twenty_vecs, u); });
#if defined(NMK_WITH_PEER_KERNEL)
    reached &= measure_closest("closest point, cubic Bezier", bezier);
    reached &= measure_closest("closest point, NURBS of 20 poles", nurbs);
    reached &= measure_length("length to 1e-9, cubic Bezier", bezier);
    reached &= measure_length("length to 1e-9, NURBS of 20 poles", nurbs);
#endif
    reached &= compare_with_scans();
    return reached ? 0 : 1;
}
