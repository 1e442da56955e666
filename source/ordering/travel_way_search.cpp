#include "travel_way_search.h"

#include <ncamcontainer/coiIterators.h>
#include <nmktoolbox/search/nmkAStarSearch.h>
#include <nmktoolbox/search/nmkSearchGoal.h>
#include <nmktoolbox/search/nmkSearchNode.h>
#include <nmktoolbox/search/nmkSearchNodeGenerator.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <algorithm>
#include <memory>

#include "travel_ways.h"

namespace nmk_ordering {

namespace {

// Numbers of the places that are not corners.
constexpr int start_number = -1;
constexpr int end_number = -2;

// What is looked beyond a limit, so that rounding leaves nothing out within it.
constexpr double beyond_limit = 1.0 + 1e-9;

// A place that a way may bend at, begin or end at.
class WayNode : public nmkSearchNode {
  public:
    /// `travelled` is what the search counts to the node, to the bit.
    WayNode(const TravelWays& ways, int number, const PlanePoint& place, const PlanePoint& end,
            double travelled)
        : m_ways(ways), m_number(number), m_place(place), m_end(end), m_travelled(travelled) {}

    int number() const { return m_number; }
    const PlanePoint& place() const { return m_place; }
    double travelled() const { return m_travelled; }
    double min_cost(const nmkSearchNode& other) const override {
        return m_ways.cost(m_place, static_cast<const WayNode&>(other).m_place);
    }
    // The metric keeps the triangle inequality, so that this is never above the way.
    double min_cost(const nmkSearchGoal&) const override { return m_ways.cost(m_place, m_end); }

  protected:
    bool is_equal(const nmkSearchNode& other) const override {
        return m_number == static_cast<const WayNode&>(other).m_number;
    }

  private:
    const TravelWays& m_ways;
    int m_number;
    PlanePoint m_place;
    PlanePoint m_end;
    double m_travelled;
};

class WayGoal : public nmkSearchGoal {
  public:
    bool contains(const nmkSearchNode& node) const override {
        return static_cast<const WayNode&>(node).number() == end_number;
    }
};

// What is common to the nodes of one search; all borrowed.
struct WaySpace {
    TravelWays& ways;
    const PlanePoint& to;
    const SeenCorners& seen_from;
    const SeenCorners& seen_to;
    double limit;
    WayScratch& scratch;
    bool is_cut = false;
};

class WayGenerator : public nmkSearchNodeGenerator {
  public:
    explicit WayGenerator(WaySpace& space) : m_space(space) {}

    // A node is expanded once, when it is closed.
    void expand_node(const nmkSearchNode& node,
                     coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const override {
        const auto& from = static_cast<const WayNode&>(node);
        const int number = from.number();
        const bool is_start = number == start_number;
        const std::vector<int>& to_end = m_space.seen_to.corners;
        if (!is_start) {
            m_space.scratch.close(static_cast<std::size_t>(number));
            if (std::binary_search(to_end.begin(), to_end.end(), number)) {
                add(from, end_number, m_space.to, filler);
            }
        }
        const double reach = (m_space.limit - from.travelled()) * beyond_limit;
        const SeenCorners& seen =
            is_start ? m_space.seen_from : m_space.ways.seen_from_corner(number, reach);
        m_space.is_cut = m_space.is_cut || !seen.is_all;
        for (const int corner : seen.corners) {
            add(from, corner, m_space.ways.corner(corner), filler);
        }
    }
    double find_x_value(double x) const override { return x; }

  private:
    void add(const WayNode& from, int number, const PlanePoint& place,
             coiFiller<std::shared_ptr<const nmkSearchNode>>& filler) const {
        const TravelWays& ways = m_space.ways;
        const double travelled = ways.cost(place, from.place()) + from.travelled();
        if (travelled + ways.cost(place, m_space.to) > m_space.limit) {
            m_space.is_cut = true;
            return;
        }
        const int mark = number == end_number ? ways.corner_count() : number;
        if (!m_space.scratch.improves(static_cast<std::size_t>(mark), travelled)) return;
        filler.add(std::make_shared<WayNode>(ways, number, place, m_space.to, travelled));
    }

    WaySpace& m_space;
};

class AcceptAll : public nmkSearchNodeVerifier {
  public:
    nmkSearchNodeVerifierResult verify(const nmkSearchNode&, const nmkSearchNode&) const override {
        return nmkSearchNodeVerifierResult::accepted;
    }
    bool is_in_bounds(const nmkSearchNode&) const override { return true; }
};

}  // namespace

CornersOfWay search_corners(TravelWays& ways, const PlanePoint& from, const PlanePoint& to,
                            const SeenCorners& seen_from, const SeenCorners& seen_to, double limit,
                            WayScratch& scratch) {
    scratch.begin_search();
    WaySpace space{ways, to, seen_from, seen_to, limit, scratch, !seen_to.is_all};
    nmkAStarSearch search(std::make_shared<WayGenerator>(space), std::make_shared<AcceptAll>(),
                          std::make_shared<WayNode>(ways, start_number, from, to, 0.0),
                          std::make_shared<WayGoal>());
    std::vector<std::shared_ptr<const nmkSearchNode>> route;
    search.perform(coiFiller_from_container(route));
    CornersOfWay way;
    way.exists = !route.empty();
    way.is_cut = !way.exists && space.is_cut;
    for (const auto& node : route) {
        const int number = static_cast<const WayNode&>(*node).number();
        if (number >= 0) way.corners.push_back(number);
    }
    return way;
}

}  // namespace nmk_ordering
