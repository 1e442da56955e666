#include "travel_polygon.h"

#include <algorithm>
#include <utility>

#include "travel_box_tree.h"

namespace nmk_ordering {

namespace {

bool is_left_of(const PlanePoint& a, const PlanePoint& b) {
    return a.x != b.x ? a.x < b.x : a.y < b.y;
}

// Whether two lines have a place in common, ends included.
bool have_common_place(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c,
                       const PlanePoint& d) {
    if (box_of(a, b).is_apart(box_of(c, d))) return false;
    const int side_c = orientation(a, b, c);
    const int side_d = orientation(a, b, d);
    const int side_a = orientation(c, d, a);
    const int side_b = orientation(c, d, b);
    if (side_c * side_d < 0 && side_a * side_b < 0) return true;
    return (side_c == 0 && is_between(a, b, c)) || (side_d == 0 && is_between(a, b, d)) ||
           (side_a == 0 && is_between(c, d, a)) || (side_b == 0 && is_between(c, d, b));
}

// At the corner in the middle: the edges do not lie on each other.
bool is_free_of_spike(const PlanePoint& before, const PlanePoint& corner, const PlanePoint& after) {
    return orientation(before, corner, after) != 0 || is_between(before, after, corner);
}

// The lowest of the leftmost corners is convex; the turn there is the direction of the polygon.
bool is_turned_right(const std::vector<PlanePoint>& corners) {
    const auto first = std::min_element(corners.begin(), corners.end(), is_left_of);
    const auto number = static_cast<std::size_t>(first - corners.begin());
    const std::size_t count = corners.size();
    return orientation(corners[(number + count - 1) % count], *first,
                       corners[(number + 1) % count]) < 0;
}

}  // namespace

PlaneBox box_of(const PlanePoint& a, const PlanePoint& b) {
    return {{std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}};
}

bool is_simple(const std::vector<PlanePoint>& corners) {
    const std::size_t count = corners.size();
    if (count < 3) return false;
    const auto corner = [&](std::size_t number) { return corners[number % count]; };
    std::vector<PlaneBox> edges;
    edges.reserve(count);
    for (std::size_t i = 0; i < count; ++i) edges.push_back(box_of(corner(i), corner(i + 1)));
    const TravelBoxTree tree(edges);
    for (std::size_t i = 0; i < count; ++i) {
        if (corner(i) == corner(i + 1)) return false;
        if (!is_free_of_spike(corner(i), corner(i + 1), corner(i + 2))) return false;
        const std::size_t last = i == 0 ? count - 1 : count;
        bool is_crossed = false;
        tree.visit(corner(i), corner(i + 1), [&](std::size_t k) {
            const bool is_other = k >= i + 2 && k < last;
            return is_crossed = is_other && have_common_place(corner(i), corner(i + 1), corner(k),
                                                              corner(k + 1));
        });
        if (is_crossed) return false;
    }
    return true;
}

// The corners of the box that are farthest to each side of the line decide.
bool is_beside(const PlaneBox& box, const PlanePoint& a, const PlanePoint& b) {
    const bool is_to_right = b.x > a.x;
    const bool is_upwards = b.y > a.y;
    const PlanePoint left{is_upwards ? box.low.x : box.high.x,
                          is_to_right ? box.high.y : box.low.y};
    const PlanePoint right{is_upwards ? box.high.x : box.low.x,
                           is_to_right ? box.low.y : box.high.y};
    return orientation(a, b, left) < 0 || orientation(a, b, right) > 0;
}

// Andrew, "Another efficient algorithm for convex hulls in two dimensions", Information Processing
// Letters 9, 1979.
std::vector<PlanePoint> convex_hull(std::vector<PlanePoint> points) {
    std::sort(points.begin(), points.end(), is_left_of);
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (points.size() < 3) return points;
    std::vector<PlanePoint> hull;
    const auto add = [&](const PlanePoint& p, std::size_t kept) {
        while (hull.size() >= kept + 2 && orientation(hull[hull.size() - 2], hull.back(), p) <= 0) {
            hull.pop_back();
        }
        hull.push_back(p);
    };
    for (const PlanePoint& p : points) add(p, 0);
    const std::size_t lower = hull.size() - 1;
    for (auto p = points.rbegin() + 1; p != points.rend(); ++p) add(*p, lower);
    hull.pop_back();
    return hull;
}

TravelPolygon::TravelPolygon(std::vector<PlanePoint> corners)
    : m_corners(std::move(corners)), m_box{m_corners.front(), m_corners.front()} {
    if (is_turned_right(m_corners)) std::reverse(m_corners.begin(), m_corners.end());
    for (const PlanePoint& p : m_corners) {
        m_box.low = {std::min(m_box.low.x, p.x), std::min(m_box.low.y, p.y)};
        m_box.high = {std::max(m_box.high.x, p.x), std::max(m_box.high.y, p.y)};
    }
}

// A ray to the right of the point crosses the polygon an odd number of times.
bool TravelPolygon::has_inside(const PlanePoint& p) const {
    if (m_box.is_apart({p, p})) return false;
    bool is_inside = false;
    for (int i = 0; i < size(); ++i) {
        const PlanePoint& a = corner(i);
        const PlanePoint& b = after(i);
        if (box_of(a, b).is_apart({p, {m_box.high.x, p.y}})) continue;
        const int side = orientation(a, b, p);
        if (side == 0 && is_between(a, b, p)) return false;
        if ((a.y <= p.y) == (b.y <= p.y)) continue;
        if ((side > 0) == (a.y <= p.y)) is_inside = !is_inside;
    }
    return is_inside;
}

// Whether a line from a corner towards another place begins inside.
bool TravelPolygon::goes_inside(int number, const PlanePoint& towards) const {
    const bool is_left_of_next = orientation(corner(number), after(number), towards) > 0;
    const bool is_left_of_last = orientation(before(number), corner(number), towards) > 0;
    const bool is_reflex = orientation(before(number), corner(number), after(number)) < 0;
    return is_reflex ? is_left_of_next || is_left_of_last : is_left_of_next && is_left_of_last;
}

// What the line has in common with the edge after a corner, whose ends are on both sides of it.
TravelPolygon::Contact TravelPolygon::at_edge(int number, const PlanePoint& a,
                                              const PlanePoint& b) const {
    const int side_a = orientation(corner(number), after(number), a);
    const int side_b = orientation(corner(number), after(number), b);
    if (side_a * side_b < 0) return Contact::enters;
    if (side_a * side_b > 0) return Contact::none;
    return side_a > 0 || side_b > 0 ? Contact::enters : Contact::touches;
}

// What the line has in common with a corner that is on the line through it.
TravelPolygon::Contact TravelPolygon::at_corner(int number, const PlanePoint& a,
                                                const PlanePoint& b) const {
    const PlanePoint& p = corner(number);
    if (!is_between(a, b, p)) return Contact::none;
    const bool enters =
        (!(p == a) && goes_inside(number, a)) || (!(p == b) && goes_inside(number, b));
    return enters ? Contact::enters : Contact::touches;
}

// Without a crossing the places at which the line touches the polygon cut it into pieces, each
// wholly inside or wholly outside, and the directions at these places decide. A line that touches
// nothing is inside if its ends are.
bool TravelPolygon::meets(const PlanePoint& a, const PlanePoint& b) const {
    if (m_box.is_apart(box_of(a, b))) return false;
    if (a == b) return has_inside(a);
    if (is_beside(m_box, a, b)) return false;
    bool touches = false;
    int side = orientation(a, b, corner(0));
    for (int i = 0; i < size(); ++i) {
        const int next_side = orientation(a, b, after(i));
        Contact contact = Contact::none;
        if (side == 0) contact = at_corner(i, a, b);
        if (side * next_side < 0) contact = at_edge(i, a, b);
        if (contact == Contact::enters) return true;
        touches = touches || contact == Contact::touches;
        side = next_side;
    }
    return !touches && has_inside(a);
}

}  // namespace nmk_ordering
