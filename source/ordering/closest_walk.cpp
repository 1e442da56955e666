// closest_walk: sites, their tree, and the comparison by earlier references.
#include "closest_walk.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace nmk_ordering {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

bool is_same(const PlanPoint& a, const PlanPoint& b) { return a.x == b.x && a.y == b.y; }

}  // namespace

ClosestWalk::ClosestWalk(const std::vector<PlanPoint>& points, const PlanPoint& start)
    : m_members(points.size()),
      m_site_of(points.size()),
      m_reference(start),
      m_tree(std::vector<PlanPoint>()) {
    gather_sites(points);
    m_tree = PlanPointTree(m_coordinates);
}

void ClosestWalk::gather_sites(const std::vector<PlanPoint>& points) {
    std::iota(m_members.begin(), m_members.end(), 0);
    std::sort(m_members.begin(), m_members.end(), [&](int a, int b) {
        const PlanPoint& p = points[at(a)];
        const PlanPoint& q = points[at(b)];
        if (p.x != q.x) return p.x < q.x;
        return p.y != q.y ? p.y < q.y : a < b;
    });
    for (int i = 0; i < static_cast<int>(m_members.size()); ++i) {
        const PlanPoint& point = points[at(m_members[at(i)])];
        if (m_coordinates.empty() || !is_same(m_coordinates.back(), point)) {
            m_coordinates.push_back(point);
            m_sites.push_back({i, i});
        }
        m_sites.back().end = i + 1;
        m_site_of[at(m_members[at(i)])] = static_cast<int>(m_sites.size()) - 1;
    }
}

int ClosestWalk::next() {
    m_tree.nearest(m_reference, m_tied);
    const int site = first_of(m_tied);
    const int point = m_members[at(m_sites[at(site)].begin++)];
    if (m_sites[at(site)].begin == m_sites[at(site)].end) m_tree.remove(site);
    // A second sort by the same reference changes nothing, so it need not be recorded.
    if (m_past.empty() || !is_same(m_past.back(), m_reference)) m_past.push_back(m_reference);
    m_reference = m_coordinates[at(site)];
    return point;
}

int ClosestWalk::first_of(std::vector<int>& candidates) const {
    for (auto earlier = m_past.rbegin(); earlier != m_past.rend() && candidates.size() > 1;
         ++earlier) {
        keep_nearest(*earlier, candidates);
    }
    return *std::min_element(candidates.begin(), candidates.end(),
                             [&](int a, int b) { return oldest(a) < oldest(b); });
}

void ClosestWalk::keep_nearest(const PlanPoint& from, std::vector<int>& candidates) const {
    double least = std::numeric_limits<double>::infinity();
    for (const int site : candidates)
        least = std::min(least, squared_distance(m_coordinates[at(site)], from));
    std::erase_if(candidates, [&](int site) {
        return squared_distance(m_coordinates[at(site)], from) > least;
    });
}

int ClosestWalk::oldest(int site) const { return m_members[at(m_sites[at(site)].begin)]; }

std::vector<int> ClosestWalk::left() const {
    std::vector<int> points;
    for (const Site& site : m_sites) {
        points.insert(points.end(), m_members.begin() + site.begin, m_members.begin() + site.end);
    }
    std::sort(points.begin(), points.end(), [&](int a, int b) { return comes_before(a, b); });
    return points;
}

bool ClosestWalk::comes_before(int a, int b) const {
    const int site_a = m_site_of[at(a)];
    const int site_b = m_site_of[at(b)];
    if (site_a == site_b) return a < b;
    for (auto earlier = m_past.rbegin(); earlier != m_past.rend(); ++earlier) {
        const double to_a = squared_distance(m_coordinates[at(site_a)], *earlier);
        const double to_b = squared_distance(m_coordinates[at(site_b)], *earlier);
        if (to_a != to_b) return to_a < to_b;
    }
    return a < b;
}

}  // namespace nmk_ordering
