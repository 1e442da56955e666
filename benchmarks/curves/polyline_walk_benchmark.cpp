// Benchmark: points at equal lengths on a polyline of 1e5 points, and curves compared at 1e6
// samples, beside bare passes over the same points that keep nothing but sums.
//
// The bare pass takes the root of each segment and interpolates a point at each multiple of the
// spacing; it is given the length, and knows no vertices to snap to. The comparison's peer makes
// two such passes and adds up the distances of their points.
#include <nmktoolbox/curves.h>

#include <cmath>
#include <random>
#include <span>
#include <vector>

#include "stopwatch.h"

namespace {

// How far a point may be from the bare one: points within the tolerance of a vertex are moved
// there.
constexpr double snap = 2e-5;

std::vector<giPoint3> generated(int count) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> step(0.5, 1.5);
    std::vector<giPoint3> points = {{0, 0, 0}};
    for (int i = 1; i < count; ++i)
        points.push_back(points.back() + giVector3(step(random), step(random), step(random)));
    return points;
}

double length_of(std::span<const giPoint3> points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) length += points[i - 1].distance(points[i]);
    return length;
}

class BareWalk {
  public:
    explicit BareWalk(std::span<const giPoint3> points) : m_points(points) { take_length(); }

    giPoint3 at(double target) {
        while (m_walked + m_length < target && m_k + 2 < m_points.size()) {
            m_walked += m_length;
            ++m_k;
            take_length();
        }
        const double part = (target - m_walked) / m_length;
        return m_points[m_k] + (m_points[m_k + 1] - m_points[m_k]) * part;
    }

  private:
    void take_length() { m_length = m_points[m_k].distance(m_points[m_k + 1]); }

    std::span<const giPoint3> m_points;
    std::size_t m_k = 0;
    double m_walked = 0.0;
    double m_length = 0.0;
};

bool report_equal_spacing() {
    const int count = stopwatch::size(100000, 1000);
    const ngkPolyline3 polyline(generated(count));
    const double spacing = length_of(polyline.points()) / (count - 1);
    giPoint3coPageArr points;
    doublecoPageArr parameters;
    std::vector<giPoint3> bare(static_cast<std::size_t>(count));
    const auto ours = [&] {
        nmkNgkPolylineUtils::evaluate_equally_spaced_points(polyline, count, points, parameters);
        return points.size();
    };
    const auto peer = [&] {
        BareWalk walk(polyline.points());
        for (int i = 0; i < count; ++i) bare[static_cast<std::size_t>(i)] = walk.at(i * spacing);
        return count;
    };
    stopwatch::Taken taken = stopwatch::in_turns(20, ours, peer);
    for (int i = 0; i < count; ++i)
        taken.same = taken.same && points[i].coincident(bare[static_cast<std::size_t>(i)], snap);
    return stopwatch::report("1e5 equally spaced points on 1e5", taken.ours, taken.peer, 2.0,
                             taken.same);
}

bool report_compare() {
    const int samples = stopwatch::size(1000000, 10000);
    const ngkCurvePtr3 curve(new ngkPolyline3(generated(1000)));
    const std::vector<giPoint3> points = generated(1000);
    const double length = length_of(points);
    const double tolerance = length / samples;
    const auto ours = [&] { return nmkNgkCurveCompare::compare(curve, curve, tolerance); };
    const auto peer = [&] {
        BareWalk a(points);
        BareWalk b(points);
        double sum = 0.0;
        for (int i = 1; i <= samples; ++i) {
            const double target = i * tolerance;
            sum += a.at(target).distance(b.at(target));
        }
        return sum == 0.0 ? 1 : 0;
    };
    const stopwatch::Taken taken = stopwatch::in_turns(5, ours, peer);
    return stopwatch::report("compare with 1e6 samples", taken.ours, taken.peer, 3.0, taken.same);
}

}  // namespace

int main() {
    const bool is_spacing_reached = report_equal_spacing();
    return report_compare() && is_spacing_reached ? 0 : 1;
}
