// travel_polygon.h: a simple polygon of the plane, and what is inside it, decided exactly.
//
// The inside is open: edges and corners do not belong to it.
#pragma once

#include <cstddef>
#include <vector>

#include "travel_orientation.h"

namespace nmk_ordering {

struct PlaneBox {
    PlanePoint low, high;

    bool is_apart(const PlaneBox& other) const {
        return high.x < other.low.x || other.high.x < low.x || high.y < other.low.y ||
               other.high.y < low.y;
    }
};

/// The box of a line.
PlaneBox box_of(const PlanePoint& a, const PlanePoint& b);

/// Whether the whole box is on one side of the line through a and b, and does not touch it. False
/// where both are one place.
bool is_beside(const PlaneBox& box, const PlanePoint& a, const PlanePoint& b);

/// Whether the corners, at least three, are all different and no two edges meet but neighbours in
/// their corner.
bool is_simple(const std::vector<PlanePoint>& corners);

/// The smallest convex polygon around all points, to the left, without corners on its edges.
std::vector<PlanePoint> convex_hull(std::vector<PlanePoint> points);

class TravelPolygon {
  public:
    /// The corners of a simple polygon in either direction.
    explicit TravelPolygon(std::vector<PlanePoint> corners);

    const PlaneBox& box() const { return m_box; }
    int size() const { return static_cast<int>(m_corners.size()); }
    const PlanePoint& corner(int number) const {
        return m_corners[static_cast<std::size_t>(number)];
    }
    const PlanePoint& before(int number) const {
        return corner(number == 0 ? size() - 1 : number - 1);
    }
    const PlanePoint& after(int number) const {
        return corner(number + 1 == size() ? 0 : number + 1);
    }

    /// Whether the polygon is convex at a corner. A shortest way bends at no other.
    bool is_convex_at(int number) const {
        return orientation(before(number), corner(number), after(number)) > 0;
    }
    /// Whether a line from `from` to the corner may go on without entering the polygon there. A
    /// shortest way bends at no corner of which this is false.
    bool is_tangent(const PlanePoint& from, int number) const {
        return orientation(from, corner(number), before(number)) *
                   orientation(from, corner(number), after(number)) >=
               0;
    }

    bool has_inside(const PlanePoint& p) const;
    /// Whether some place of the line from a to b is inside.
    bool meets(const PlanePoint& a, const PlanePoint& b) const;

  private:
    enum class Contact { none, touches, enters };

    bool goes_inside(int number, const PlanePoint& towards) const;
    Contact at_edge(int number, const PlanePoint& a, const PlanePoint& b) const;
    Contact at_corner(int number, const PlanePoint& a, const PlanePoint& b) const;

    std::vector<PlanePoint> m_corners;  // the inside is on the left
    PlaneBox m_box;
};

}  // namespace nmk_ordering
