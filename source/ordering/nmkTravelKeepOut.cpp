// nmkTravelKeepOut: polygons around circles and around polygons with a clearance.
#include <nmktoolbox/ordering/nmkTravelKeepOut.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "travel_network.h"
#include "travel_obstacles.h"

namespace {

using nmk_ordering::PlanePoint;
using Corners = std::vector<giPoint2>;

// A part of the radius, and of the coordinates of the centre, by which a corner is moved outwards:
// more than rounding can move it inwards.
constexpr double outwards_of_radius = 0x1p-46;
constexpr double outwards_of_centre = 0x1p-50;

bool is_length(double value) { return value >= 0.0 && std::isfinite(value); }

bool is_place(const giPoint2& p) { return p.is_set() && std::isfinite(p.x) && std::isfinite(p.y); }

nmkTravelKeepOut bad_keep_out() { return {{Corners()}}; }

// Directions from 0 up to 90 degrees, halved again and again, then turned into the other quadrants.
std::vector<PlanePoint> directions(int halvings) {
    std::vector<PlanePoint> quadrant = {{1.0, 0.0}, {0.0, 1.0}};
    for (int i = 0; i < halvings; ++i) {
        std::vector<PlanePoint> finer = {quadrant.front()};
        for (std::size_t k = 1; k < quadrant.size(); ++k) {
            const double x = quadrant[k - 1].x + quadrant[k].x;
            const double y = quadrant[k - 1].y + quadrant[k].y;
            const double length = std::sqrt(x * x + y * y);
            finer.push_back({x / length, y / length});
            finer.push_back(quadrant[k]);
        }
        quadrant = std::move(finer);
    }
    quadrant.pop_back();
    std::vector<PlanePoint> all = quadrant;
    for (std::size_t k = 0; k < 3 * quadrant.size(); ++k) all.push_back({-all[k].y, all[k].x});
    return all;
}

// The corners of the regular polygon around a circle of this radius, as seen from its centre.
class RoundShape {
  public:
    RoundShape(double radius, double chord_error) {
        int halvings = 1;
        double cosine = std::sqrt((1.0 + std::sqrt(0.5)) / 2.0);  // of half an edge of 8
        while (!(radius / cosine - radius <= chord_error) &&
               (4 << (halvings + 1)) <= nmkTravelKeepOut::max_circle_corners) {
            cosine = std::sqrt((1.0 + cosine) / 2.0);
            ++halvings;
        }
        m_radius = radius / cosine * (1.0 + outwards_of_radius);
        m_directions = directions(halvings);
    }

    void append_around(const giPoint2& centre, std::vector<giPoint2>& corners) const {
        const double radius =
            m_radius + outwards_of_centre * (std::fabs(centre.x) + std::fabs(centre.y));
        for (const PlanePoint& direction : m_directions) {
            corners.emplace_back(centre.x + radius * direction.x, centre.y + radius * direction.y);
        }
    }

  private:
    double m_radius = 0.0;
    std::vector<PlanePoint> m_directions;
};

Corners hull(const Corners& points) {
    std::vector<PlanePoint> places;
    for (const giPoint2& p : points) places.push_back({p.x, p.y});
    Corners corners;
    for (const PlanePoint& p : nmk_ordering::convex_hull(std::move(places))) {
        corners.emplace_back(p.x, p.y);
    }
    return corners;
}

bool is_convex(const std::vector<PlanePoint>& corners) {
    bool turns_left = false;
    bool turns_right = false;
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        const int turn = nmk_ordering::orientation(corners[i], corners[(i + 1) % count],
                                                   corners[(i + 2) % count]);
        turns_left = turns_left || turn > 0;
        turns_right = turns_right || turn < 0;
    }
    return !(turns_left && turns_right);
}

}  // namespace

nmkTravelKeepOut nmkTravelKeepOut::circle(const giPoint2& centre, double radius, double clearance,
                                          double chord_error) {
    if (!is_place(centre) || !is_length(radius) || !is_length(clearance) ||
        !(radius + clearance > 0.0) || !(chord_error > 0.0)) {
        return bad_keep_out();
    }
    Corners corners;
    RoundShape(radius + clearance, chord_error).append_around(centre, corners);
    return {{std::move(corners)}};
}

nmkTravelKeepOut nmkTravelKeepOut::rectangle(const giPoint2& corner, const giPoint2& opposite,
                                             double clearance, double chord_error) {
    return polygon({corner, {opposite.x, corner.y}, opposite, {corner.x, opposite.y}}, clearance,
                   chord_error);
}

nmkTravelKeepOut nmkTravelKeepOut::polygon(const std::vector<giPoint2>& corners, double clearance,
                                           double chord_error) {
    const bool is_good = std::all_of(corners.begin(), corners.end(), is_place) &&
                         is_length(clearance) && chord_error > 0.0;
    if (!is_good) return bad_keep_out();
    const double unit = nmk_ordering::unit_of_keep_outs({{{corners}}});
    const std::vector<PlanePoint> places = nmk_ordering::plane_corners(corners, unit);
    // What is not simple is left for the check of the problem.
    if (!(clearance > 0.0) || !nmk_ordering::is_simple(places)) return {{corners}};
    const RoundShape round(clearance, chord_error);
    if (is_convex(places)) {
        Corners points;
        for (const giPoint2& corner : corners) round.append_around(corner, points);
        return {{hull(points)}};
    }
    nmkTravelKeepOut keep_out{{corners}};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        Corners points;
        round.append_around(corners[i], points);
        round.append_around(corners[(i + 1) % corners.size()], points);
        keep_out.parts.push_back(hull(points));
    }
    return keep_out;
}
