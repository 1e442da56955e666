// nmkTravelWays: the shortest ways around the keep-outs of a travel problem.
//
// nmkTravelOrder counts these ways as its legs; a caller who draws or writes an order asks here
// where its legs bend. A way bends at corners of keep-outs only, and is found by best-first search
// of the corners that can be reached from each other without crossing a keep-out
// (nmkAStarSearch). Whether a leg crosses one is decided exactly, whatever the coordinates.
//
// A way is the shortest in the measure of the problem among those that a stretched string can take,
// and is the same in both directions. For length and Chebyshev no way at all is shorter. For the
// time of a rapid move each piece is a move of its own, which stops at the bend; a way with fewer
// stops that bends away from the keep-outs may take less time. Places of different z: z changes
// along the way in proportion to the measure of its pieces in the plane.
//
// A way takes a search among the keep-outs near it only, however many there are. An object
// remembers what it has found, so it belongs to one thread.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/ordering/nmkTravelProblem.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace nmk_ordering {
class TravelAreas;
class TravelWays;
}  // namespace nmk_ordering

class NMKTOOLBOX_EXPORT nmkTravelWays {
  public:
    /// The keep-outs, measure, speed and acceleration of `problem`; its items, ends and groups are
    /// ignored. Where these are bad, as for nmkTravelOrder, error() is not empty and there are no
    /// keep-outs.
    explicit nmkTravelWays(const nmkTravelProblem& problem);
    nmkTravelWays(const nmkTravelWays&) = delete;
    nmkTravelWays& operator=(const nmkTravelWays&) = delete;
    ~nmkTravelWays();

    /// The faulty part of the problem, and what was expected; empty for none.
    const std::string& error() const { return m_error; }

    // Coordinates of all places: finite, and at most max_coordinate.
    static constexpr double max_coordinate = 1e100;

    /// The number of the first keep-out that has `place` inside; empty for none.
    std::optional<int> keep_out_at(const giPoint3& place) const;

    /// The number of the first keep-out that the straight line crosses; empty for none.
    std::optional<int> keep_out_between(const giPoint3& from, const giPoint3& to) const;

    /// The number of the area in which a place lies: two places have one number where a way leads
    /// from one to the other. The area around all keep-outs has number 0; those that keep-outs
    /// enclose are numbered from 1 in the order in which they are asked for. Empty inside a
    /// keep-out.
    std::optional<int> area_at(const giPoint3& place) const;

    /// Whether keep-outs may enclose a place: false where none does, as is certain without a
    /// search.
    bool may_be_enclosed(const giPoint3& place) const;

    /// The places at which the shortest way bends, in the order of travel; none where it is
    /// straight. Empty where there is no way: one of the places is inside a keep-out, or keep-outs
    /// enclose it.
    std::optional<std::vector<giPoint3>> bends(const giPoint3& from, const giPoint3& to) const;

    /// The length of the shortest way in the measure of the problem; infinite where there is none.
    double length(const giPoint3& from, const giPoint3& to) const;

  private:
    std::string m_error;
    double m_unit = 1.0;
    bool m_is_time = false;
    std::unique_ptr<nmk_ordering::TravelWays> m_ways;
    std::unique_ptr<nmk_ordering::TravelAreas> m_areas;
};
