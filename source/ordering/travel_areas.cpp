#include "travel_areas.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace nmk_ordering {

namespace {

bool has(const PlaneBox& box, const PlanePoint& p) { return !box.is_apart({p, p}); }

PlaneBox around_both(const PlaneBox& a, const PlaneBox& b) {
    return {{std::min(a.low.x, b.low.x), std::min(a.low.y, b.low.y)},
            {std::max(a.high.x, b.high.x), std::max(a.high.y, b.high.y)}};
}

// Which polygons are in one cluster: each points to an earlier one, the first to itself.
class Links {
  public:
    explicit Links(std::size_t count) : m_links(count) {
        std::iota(m_links.begin(), m_links.end(), std::size_t{0});
    }
    std::size_t first(std::size_t i) {
        while (m_links[i] != i) i = m_links[i] = m_links[m_links[i]];
        return i;
    }
    void join(std::size_t a, std::size_t b) {
        const std::size_t of_a = first(a);
        const std::size_t of_b = first(b);
        m_links[std::max(of_a, of_b)] = std::min(of_a, of_b);
    }

  private:
    std::vector<std::size_t> m_links;
};

Links linked(const std::vector<TravelPolygon>& polygons, const std::vector<PlaneBox>& boxes) {
    const TravelBoxTree tree(boxes);
    Links links(polygons.size());
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        const auto meets = [&](const PlaneBox& box) { return !box.is_apart(boxes[i]); };
        tree.visit_where(meets, [&](std::size_t other) {
            if (meets(boxes[other])) links.join(i, other);
            return false;
        });
    }
    return links;
}

}  // namespace

TravelAreas::TravelAreas(const std::vector<TravelPolygon>& polygons) : m_polygons(polygons) {
    add_clusters();
    std::vector<PlaneBox> boxes;
    boxes.reserve(m_clusters.size());
    for (const Cluster& cluster : m_clusters) boxes.push_back(cluster.box);
    m_tree = TravelBoxTree(boxes);
    m_areas[{}] = around;
}

void TravelAreas::add_clusters() {
    std::vector<PlaneBox> boxes;
    boxes.reserve(m_polygons.size());
    for (const TravelPolygon& polygon : m_polygons) boxes.push_back(polygon.box());
    Links links = linked(m_polygons, boxes);
    std::map<std::size_t, Cluster> clusters;  // by first polygon
    for (std::size_t i = 0; i < m_polygons.size(); ++i) {
        Cluster& cluster = clusters[links.first(i)];
        cluster.box = cluster.polygons.empty() ? boxes[i] : around_both(cluster.box, boxes[i]);
        cluster.polygons.push_back(i);
    }
    for (auto& [first, cluster] : clusters) {
        if (cluster.polygons.size() > 1) m_clusters.push_back(std::move(cluster));
    }
}

// The metric has no influence on whether there is a way.
void TravelAreas::prepare(Cluster& cluster) const {
    if (cluster.ways != nullptr) return;
    std::vector<TravelPolygon> polygons;
    for (const std::size_t i : cluster.polygons) polygons.push_back(m_polygons[i]);
    cluster.ways =
        std::make_unique<TravelWays>(TravelObstacles(std::move(polygons)), TravelMetric());
    // Outside, and later in order than all in the box: a search begins at the place that may be
    // enclosed, from where few corners can be seen.
    const PlaneBox& box = cluster.box;
    const double side = std::max(box.high.x - box.low.x, box.high.y - box.low.y);
    cluster.outside = {box.high.x + side, box.high.y + side};
    cluster.places = {cluster.outside};
}

// The place of late is mostly near, so that nothing has to be searched.
int TravelAreas::area_in(Cluster& cluster, const PlanePoint& place) {
    prepare(cluster);
    std::vector<PlanePoint>& places = cluster.places;
    const auto is_in_line = [&](const PlanePoint& from) {
        return cluster.ways->obstacles().is_free(from, place);
    };
    const auto is_reached = [&](const PlanePoint& from) {
        const PlanePoint& a = &from == &places.front() ? cluster.outside : from;
        return std::isfinite(cluster.ways->way({a.x, a.y, 0.0}, {place.x, place.y, 0.0}).length);
    };
    const std::int64_t searched = cluster.ways->searched();
    auto found = std::find_if(places.begin(), places.end(), is_in_line);
    if (found == places.end()) found = std::find_if(places.begin(), places.end(), is_reached);
    m_searched += cluster.ways->searched() - searched;
    if (found == places.end()) found = places.insert(found, place);
    *found = place;
    return static_cast<int>(found - places.begin());
}

bool TravelAreas::may_be_enclosed(const PlanePoint& place) const {
    bool is_in_box = false;
    const auto meets = [&](const PlaneBox& box) { return has(box, place); };
    m_tree.visit_where(meets, [&](std::size_t i) { return is_in_box = meets(m_clusters[i].box); });
    return is_in_box;
}

int TravelAreas::of(const PlanePoint& place) {
    std::vector<std::pair<std::size_t, int>> areas;
    const auto meets = [&](const PlaneBox& box) { return has(box, place); };
    m_tree.visit_where(meets, [&](std::size_t i) {
        const int area = meets(m_clusters[i].box) ? area_in(m_clusters[i], place) : around;
        if (area != around) areas.emplace_back(i, area);
        return false;
    });
    std::sort(areas.begin(), areas.end());
    return m_areas.try_emplace(std::move(areas), static_cast<int>(m_areas.size())).first->second;
}

}  // namespace nmk_ordering
