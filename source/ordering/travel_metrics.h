// travel_metrics.h: what a leg from one point to another costs.
//
// Each metric has its own Point, made from the three coordinates, and grows with the difference on
// each axis, which the tree of neighbours relies on. TravelMetric picks one by name for work that
// is not hot.
#pragma once

#include <nmktoolbox/ordering/nmkTravelProblem.h>

#include <algorithm>
#include <cmath>

namespace nmk_ordering {

/// A point of a problem, after scaling.
struct TravelPoint {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline double coordinate(const TravelPoint& p, int axis) {
    return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
}

/// Euclidean length where all points have one z.
struct PlaneLength {
    struct Point {
        double x, y;
    };
    static Point point(const TravelPoint& p) { return {p.x, p.y}; }
    double operator()(const Point& a, const Point& b) const {
        const double dx = a.x - b.x;
        const double dy = a.y - b.y;
        return std::sqrt(dx * dx + dy * dy);
    }
};

struct SpaceLength {
    using Point = TravelPoint;
    static Point point(const TravelPoint& p) { return p; }
    double operator()(const Point& a, const Point& b) const {
        const double dx = a.x - b.x;
        const double dy = a.y - b.y;
        const double dz = a.z - b.z;
        return std::sqrt(dx * dx + dy * dy + dz * dz);
    }
};

struct ChebyshevLength {
    using Point = TravelPoint;
    static Point point(const TravelPoint& p) { return p; }
    double operator()(const Point& a, const Point& b) const {
        return std::max({std::fabs(a.x - b.x), std::fabs(a.y - b.y), std::fabs(a.z - b.z)});
    }
};

/// The time of a rapid move: trapezoid of speed on each axis, triangle where the way is too short
/// to reach the speed.
struct RapidTime {
    using Point = TravelPoint;

    nmkTravelAxes speed;
    nmkTravelAxes acceleration;

    static Point point(const TravelPoint& p) { return p; }
    static double axis_time(double way, double speed, double acceleration) {
        // Squares would vanish beside a problem with very large coordinates.
        const double at_speed = way / speed;
        const double of_a_ramp = speed / acceleration;
        return at_speed < of_a_ramp ? 2.0 * std::sqrt(way / acceleration) : at_speed + of_a_ramp;
    }
    double operator()(const Point& a, const Point& b) const {
        return std::max({axis_time(std::fabs(a.x - b.x), speed.x, acceleration.x),
                         axis_time(std::fabs(a.y - b.y), speed.y, acceleration.y),
                         axis_time(std::fabs(a.z - b.z), speed.z, acceleration.z)});
    }
};

/// Any of the metrics, picked when it is used.
struct TravelMetric {
    using Point = TravelPoint;
    static Point point(const TravelPoint& p) { return p; }

    nmkTravelMeasure measure = nmkTravelMeasure::length;
    RapidTime rapid;

    double operator()(const TravelPoint& a, const TravelPoint& b) const {
        switch (measure) {
            case nmkTravelMeasure::chebyshev:
                return ChebyshevLength()(a, b);
            case nmkTravelMeasure::time:
                return rapid(a, b);
            case nmkTravelMeasure::length:
                break;
        }
        return SpaceLength()(a, b);
    }
};

}  // namespace nmk_ordering
