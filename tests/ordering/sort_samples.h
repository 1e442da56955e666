// sort_samples: items, lists and reporters for the tests and benchmarks of the sorters.
#pragma once

#include <geometry/giPoint3.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace sort_samples {

/// A hole: the least that a caller's own item needs.
class Hole : public nmkSortItemWithPoint {
  public:
    Hole(double x, double y, double z = 0.0) : m_point(x, y, z) {}
    const giPoint3& get_point() const override { return m_point; }

  private:
    giPoint3 m_point;
};

/// An item of another class that pulls half as hard at the elastic ring as others do.
class WeakHole : public Hole {
  public:
    using Hole::Hole;
    void get_weighted_distance(double& dx, double& dy, int ring_index,
                               giPoint3& ring_point) const override {
        Hole::get_weighted_distance(dx, dy, ring_index, ring_point);
        dx *= 0.5;
        dy *= 0.5;
    }
};

/// Items owned by the sample, numbered from 0.
template <class Item>
class Sample {
  public:
    template <class... Arguments>
    Item& add(const Arguments&... arguments) {
        m_items.push_back(std::make_unique<Item>(arguments...));
        m_items.back()->set_index(static_cast<int>(m_items.size()) - 1);
        return *m_items.back();
    }
    template <class Sorter>
    void give_to(Sorter& sorter) {
        for (auto& item : m_items) sorter.add_item(nmkSortItemPrf(item.get()));
    }
    Item& operator[](int i) { return *m_items[static_cast<std::size_t>(i)]; }
    int size() const { return static_cast<int>(m_items.size()); }

  private:
    std::vector<std::unique_ptr<Item>> m_items;
};

using Holes = Sample<Hole>;
using Lines = Sample<nmkSortItemLine>;

/// The indices of a list's items, by one whole walk.
inline std::vector<int> indices(nmkSortList& list) {
    std::vector<int> order;
    list.reset();
    while (list.forwards() != 0) order.push_back(list.read().item()->index());
    return order;
}

/// Logs every call, and requests a stop at one of the increments.
class Reporter : public nmkProgressBreak {
  public:
    explicit Reporter(int stop_at_increment = 0) : m_stop_at(stop_at_increment) {}
    int send_progress_bar_to_0(const char* text) override {
        calls.push_back(std::string("0 ") + text);
        return 0;
    }
    void set_range(double range) override { calls.push_back("range " + std::to_string(range)); }
    int increment() override {
        calls.push_back("increment");
        return ++increments == m_stop_at ? 1 : 0;
    }
    int send_progress_bar_to_100() override {
        calls.push_back("100");
        return 0;
    }

    std::vector<std::string> calls;
    int increments = 0;

  private:
    int m_stop_at;
};

/// The layout of the points of a generated sample.
enum class Layout { random, grid, coincident, ring, mirrored };

constexpr Layout layouts[] = {Layout::random, Layout::grid, Layout::coincident, Layout::ring,
                              Layout::mirrored};

inline giPoint3 point_of(Layout layout, int i, int n, std::mt19937& words) {
    const auto draw = [&](int limit) {
        return static_cast<int>(words() % static_cast<unsigned>(limit));
    };
    switch (layout) {
        case Layout::grid:
            return giPoint3(draw(12), draw(9), draw(3));
        case Layout::coincident:
            return giPoint3(draw(3) * 0.5, draw(2), 0.0);
        case Layout::ring:  // all at one distance from the origin, with copies of the centre
            return i % 5 == 0 ? giPoint3(0.0, 0.0, 0.0)
                              : giPoint3(i % 2 != 0 ? 5.0 : -3.0, i % 3 != 0 ? 12.0 : -4.0, 0.0);
        case Layout::mirrored:  // a line along x, and pairs on either side of it
            return i < n / 2 ? giPoint3(draw(n), 0.0, 0.0)
                             : giPoint3(n + draw(4), draw(2) != 0 ? 2.0 : -2.0, 0.0);
        case Layout::random:
            break;
    }
    return giPoint3(draw(1 << 30) / 1e7, draw(1 << 30) / 1e7, draw(1 << 30) / 1e8);
}

inline void fill(Holes& holes, Layout layout, int n, std::uint32_t seed) {
    std::mt19937 words(seed);
    for (int i = 0; i < n; ++i) {
        const giPoint3 p = point_of(layout, i, n, words);
        holes.add(p.x, p.y, p.z);
    }
}

/// Restores the settings of the process-wide comparator when a test ends.
class KeepsComparator {
  public:
    KeepsComparator()
        : m_primary(nmkItemComparator::primary_sort()),
          m_secondary(nmkItemComparator::secondary_sort()),
          m_equality(nmkItemComparator::equality_method()),
          m_point(nmkItemComparator::comparison_point()) {}
    ~KeepsComparator() {
        nmkItemComparator::primary_sort(m_primary);
        nmkItemComparator::secondary_sort(m_secondary);
        nmkItemComparator::equality_method(m_equality);
        nmkItemComparator::set_comparison_point(m_point);
    }
    KeepsComparator(const KeepsComparator&) = delete;
    KeepsComparator& operator=(const KeepsComparator&) = delete;

  private:
    nmkItemComparator::Comparison m_primary;
    nmkItemComparator::Comparison m_secondary;
    nmkItemComparator::Equality m_equality;
    giPoint3 m_point;
};

}  // namespace sort_samples
