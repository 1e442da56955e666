// place_tree: build by halves, search the nearer half first, forget a half that is empty.
#include "place_tree.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace nmk_ordering {

namespace {

constexpr int most_places_of_a_leaf = 8;

std::size_t at(int index) { return static_cast<std::size_t>(index); }

// Distance from a coordinate to an interval, computed as a difference of coordinates would be.
double outside(double value, double low, double high) {
    if (value < low) return low - value;
    return value > high ? value - high : 0.0;
}

}  // namespace

struct PlaceTree::Search {
    Place from;
    std::vector<int>& found;
    double least = std::numeric_limits<double>::infinity();
};

PlaceTree::PlaceTree(std::vector<Place> all_places)
    : places(std::move(all_places)),
      order(places.size()),
      leaf_of(places.size()),
      taken(places.size(), 0) {
    std::iota(order.begin(), order.end(), 0);
    if (!places.empty()) build(0, static_cast<int>(places.size()), -1);
}

int PlaceTree::build(int begin, int end, int parent) {
    Place low = places[at(order[at(begin)])];
    Place high = low;
    for (int i = begin; i < end; ++i) {
        const Place& place = places[at(order[at(i)])];
        low = {std::min(low.x, place.x), std::min(low.y, place.y)};
        high = {std::max(high.x, place.x), std::max(high.y, place.y)};
    }
    const int node = static_cast<int>(nodes.size());
    nodes.push_back({low, high, begin, end, -1, -1, parent, end - begin});
    if (end - begin > most_places_of_a_leaf) {
        split(node);
    } else {
        for (int i = begin; i < end; ++i) leaf_of[at(order[at(i)])] = node;
    }
    return node;
}

void PlaceTree::split(int node) {
    const Node whole = nodes[at(node)];
    const bool by_x = whole.high.x - whole.low.x >= whole.high.y - whole.low.y;
    const int middle = whole.begin + (whole.end - whole.begin) / 2;
    std::nth_element(order.begin() + whole.begin, order.begin() + middle, order.begin() + whole.end,
                     [&](int a, int b) {
                         return by_x ? places[at(a)].x < places[at(b)].x
                                     : places[at(a)].y < places[at(b)].y;
                     });
    const int left = build(whole.begin, middle, node);
    const int right = build(middle, whole.end, node);
    nodes[at(node)].left = left;
    nodes[at(node)].right = right;
}

double PlaceTree::bound_of(int node, const Place& from) const {
    const Node& box = nodes[at(node)];
    const double dx = outside(from.x, box.low.x, box.high.x);
    const double dy = outside(from.y, box.low.y, box.high.y);
    return dx * dx + dy * dy;
}

void PlaceTree::nearest(const Place& from, std::vector<int>& found) const {
    found.clear();
    Search whole{from, found};
    if (!nodes.empty()) search(0, 0.0, whole);
}

void PlaceTree::search(int node, double bound, Search& state) const {
    const Node& here = nodes[at(node)];
    if (here.count == 0 || bound > state.least) return;
    if (here.left < 0) {
        search_leaf(here, state);
        return;
    }
    int nearer = here.left;
    int farther = here.right;
    double nearer_bound = bound_of(nearer, state.from);
    double farther_bound = bound_of(farther, state.from);
    if (farther_bound < nearer_bound) {
        std::swap(nearer, farther);
        std::swap(nearer_bound, farther_bound);
    }
    search(nearer, nearer_bound, state);
    search(farther, farther_bound, state);
}

void PlaceTree::search_leaf(const Node& leaf, Search& state) const {
    for (int i = leaf.begin; i < leaf.end; ++i) {
        const int place = order[at(i)];
        if (taken[at(place)] != 0) continue;
        const double distance = squared_distance(places[at(place)], state.from);
        if (distance > state.least) continue;
        if (distance < state.least) state.found.clear();
        state.least = distance;
        state.found.push_back(place);
    }
}

void PlaceTree::remove(int place) {
    taken[at(place)] = 1;
    for (int node = leaf_of[at(place)]; node >= 0; node = nodes[at(node)].parent) {
        --nodes[at(node)].count;
    }
}

}  // namespace nmk_ordering
