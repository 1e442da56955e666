#include "travel_way_search.h"

#include <ncamcontainer/coiIterators.h>
#include <nmktoolbox/search/nmkAStarSearch.h>
#include <nmktoolbox/search/nmkSearchGoal.h>
#include <nmktoolbox/search/nmkSearchNode.h>
#include <nmktoolbox/search/nmkSearchNodeGenerator.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

#include <algorithm>
#include <memory>

namespace nmk_ordering {

namespace {

// Numbers of the places that are not corners.
constexpr int start_number = -1;
constexpr int end_number = -2;

// A place that a way may bend at, begin or end at.
class WayNode : public nmkSearchNode {
  public:
    WayNode(const TravelWays& ways, int number, const PlanePoint& place, const PlanePoint& end)
        : m_ways(ways), m_number(number), m_place(place), m_end(end) {}

    int number() const { return m_number; }
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
};

class WayGoal : public nmkSearchGoal {
  public:
    bool contains(const nmkSearchNode& node) const override {
        return static_cast<const WayNode&>(node).number() == end_number;
    }
};

class WayGenerator : public nmkSearchNodeGenerator {
  public:
    WayGenerator(TravelWays& ways, const PlanePoint& to, const std::vector<int>& seen_from,
                 const std::vector<int>& seen_to)
        : m_ways(ways), m_to(to), m_seen_from(seen_from), m_seen_to(seen_to) {}

    void expand_node(const nmkSearchNode& node,
                     coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const override {
        const int number = static_cast<const WayNode&>(node).number();
        const bool is_start = number == start_number;
        if (!is_start && std::binary_search(m_seen_to.begin(), m_seen_to.end(), number)) {
            filler.add(std::make_shared<WayNode>(m_ways, end_number, m_to, m_to));
        }
        for (const int seen : is_start ? m_seen_from : m_ways.seen_from_corner(number)) {
            filler.add(std::make_shared<WayNode>(m_ways, seen, m_ways.corner(seen), m_to));
        }
    }
    double find_x_value(double x) const override { return x; }

  private:
    TravelWays& m_ways;
    PlanePoint m_to;
    const std::vector<int>& m_seen_from;
    const std::vector<int>& m_seen_to;  // ascending
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
                            const std::vector<int>& seen_from, const std::vector<int>& seen_to) {
    nmkAStarSearch search(
        std::make_shared<WayGenerator>(ways, to, seen_from, seen_to), std::make_shared<AcceptAll>(),
        std::make_shared<WayNode>(ways, start_number, from, to), std::make_shared<WayGoal>());
    std::vector<std::shared_ptr<const nmkSearchNode>> route;
    search.perform(coiFiller_from_container(route));
    CornersOfWay way;
    way.exists = !route.empty();
    for (const auto& node : route) {
        const int number = static_cast<const WayNode&>(*node).number();
        if (number >= 0) way.corners.push_back(number);
    }
    return way;
}

}  // namespace nmk_ordering
