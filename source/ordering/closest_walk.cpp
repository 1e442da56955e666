// closest_walk: sites, their tree, and the look back through the references.
#include "closest_walk.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace nmk_ordering {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

bool same_place(const Place& a, const Place& b) { return a.x == b.x && a.y == b.y; }

}  // namespace

ClosestWalk::ClosestWalk(const std::vector<Place>& points, const Place& start)
    : members(points.size()), site_of(points.size()), reference(start), tree(std::vector<Place>()) {
    gather_sites(points);
    tree = PlaceTree(places);
}

void ClosestWalk::gather_sites(const std::vector<Place>& points) {
    std::iota(members.begin(), members.end(), 0);
    std::sort(members.begin(), members.end(), [&](int a, int b) {
        const Place& p = points[at(a)];
        const Place& q = points[at(b)];
        if (p.x != q.x) return p.x < q.x;
        return p.y != q.y ? p.y < q.y : a < b;
    });
    for (int i = 0; i < static_cast<int>(members.size()); ++i) {
        const Place& place = points[at(members[at(i)])];
        if (places.empty() || !same_place(places.back(), place)) {
            places.push_back(place);
            sites.push_back({i, i});
        }
        sites.back().end = i + 1;
        site_of[at(members[at(i)])] = static_cast<int>(sites.size()) - 1;
    }
}

int ClosestWalk::next() {
    tree.nearest(reference, tied);
    const int site = first_of(tied);
    const int point = members[at(sites[at(site)].begin++)];
    if (sites[at(site)].begin == sites[at(site)].end) tree.remove(site);
    // A second sort by the same reference changes nothing, so it need not be looked back at.
    if (passed.empty() || !same_place(passed.back(), reference)) passed.push_back(reference);
    reference = places[at(site)];
    return point;
}

int ClosestWalk::first_of(std::vector<int>& candidates) const {
    for (auto earlier = passed.rbegin(); earlier != passed.rend() && candidates.size() > 1;
         ++earlier) {
        keep_nearest(*earlier, candidates);
    }
    return *std::min_element(candidates.begin(), candidates.end(),
                             [&](int a, int b) { return oldest(a) < oldest(b); });
}

void ClosestWalk::keep_nearest(const Place& from, std::vector<int>& candidates) const {
    double least = std::numeric_limits<double>::infinity();
    for (const int site : candidates)
        least = std::min(least, squared_distance(places[at(site)], from));
    std::erase_if(candidates,
                  [&](int site) { return squared_distance(places[at(site)], from) > least; });
}

int ClosestWalk::oldest(int site) const { return members[at(sites[at(site)].begin)]; }

std::vector<int> ClosestWalk::left() const {
    std::vector<int> points;
    for (const Site& site : sites) {
        points.insert(points.end(), members.begin() + site.begin, members.begin() + site.end);
    }
    std::sort(points.begin(), points.end(), [&](int a, int b) { return stands_before(a, b); });
    return points;
}

bool ClosestWalk::stands_before(int a, int b) const {
    const int site_a = site_of[at(a)];
    const int site_b = site_of[at(b)];
    if (site_a == site_b) return a < b;
    for (auto earlier = passed.rbegin(); earlier != passed.rend(); ++earlier) {
        const double to_a = squared_distance(places[at(site_a)], *earlier);
        const double to_b = squared_distance(places[at(site_b)], *earlier);
        if (to_a != to_b) return to_a < to_b;
    }
    return a < b;
}

}  // namespace nmk_ordering
