// bare_two_opt: the peer of travel_benchmark, 2-opt with neighbour lists and don't-look bits.
//
// As short as such a program can be written: a ring in an array, the shorter side reversed, started
// from random orders again and again until the time is used up. The best ring is kept.
#pragma once

#include <geometry/giPoint3.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <ctime>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

namespace bare {

class TwoOpt {
  public:
    explicit TwoOpt(const std::vector<giPoint3>& points)
        : m_points(points), m_size(static_cast<int>(points.size())) {
        find_neighbours();
    }

    /// The length of the shortest ring that is found in so many seconds of the processor; one ring
    /// is finished in any case.
    double best_in(double seconds) {
        const std::clock_t begin = std::clock();
        double best = std::numeric_limits<double>::infinity();
        do {
            shuffle();
            for (bool is_better = true; is_better;) is_better = improve_all();
            best = std::min(best, length());
        } while (static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC < seconds);
        return best;
    }

  private:
    static constexpr int neighbours = 8;

    static std::size_t at(int index) { return static_cast<std::size_t>(index); }
    double leg(int a, int b) const { return m_points[at(a)].distance(m_points[at(b)]); }
    int next(int node) const { return m_ring[at((m_places[at(node)] + 1) % m_size)]; }
    int previous(int node) const { return m_ring[at((m_places[at(node)] + m_size - 1) % m_size)]; }

    // In a window of points sorted by x, which is exact enough for a peer and quick to write.
    void find_neighbours() {
        std::vector<int> by_x(m_points.size());
        std::iota(by_x.begin(), by_x.end(), 0);
        std::sort(by_x.begin(), by_x.end(),
                  [&](int a, int b) { return m_points[at(a)].x < m_points[at(b)].x; });
        const int window = 4 * static_cast<int>(std::sqrt(m_size)) + 2 * neighbours;
        m_neighbours.resize(m_points.size() * neighbours);
        for (int place = 0; place < m_size; ++place) {
            std::vector<int> near;
            const int end = std::min(m_size, place + window);
            for (int other = std::max(0, place - window); other < end; ++other) {
                if (other != place) near.push_back(by_x[at(other)]);
            }
            const int node = by_x[at(place)];
            std::partial_sort(near.begin(), near.begin() + neighbours, near.end(),
                              [&](int a, int b) { return leg(node, a) < leg(node, b); });
            std::copy_n(near.begin(), neighbours,
                        m_neighbours.begin() + static_cast<std::ptrdiff_t>(node) * neighbours);
        }
    }

    void shuffle() {
        m_ring.resize(m_points.size());
        std::iota(m_ring.begin(), m_ring.end(), 0);
        for (int i = m_size - 1; i > 0; --i) {
            std::swap(m_ring[at(i)], m_ring[m_words() % static_cast<unsigned>(i + 1)]);
        }
        m_places.resize(m_points.size());
        for (int place = 0; place < m_size; ++place) m_places[at(m_ring[at(place)])] = place;
        m_is_looked_at.assign(m_points.size(), 1);
    }

    bool improve_all() {
        bool is_better = false;
        for (int node = 0; node < m_size; ++node) {
            if (m_is_looked_at[at(node)] == 0) continue;
            while (improve(node)) is_better = true;
            m_is_looked_at[at(node)] = 0;
        }
        return is_better;
    }

    bool improve(int node) {
        for (const bool forwards : {true, false}) {
            const int beside = forwards ? next(node) : previous(node);
            const double old = leg(node, beside);
            for (int k = 0; k < neighbours; ++k) {
                const int to = m_neighbours[at(node * neighbours + k)];
                const double gain = old - leg(node, to);
                if (gain <= 0.0) break;
                const int beside_to = forwards ? next(to) : previous(to);
                if (gain + leg(to, beside_to) - leg(beside, beside_to) <= 1e-9 * old) continue;
                forwards ? reverse(beside, to) : reverse(to, beside);
                for (const int touched : {node, beside, to, beside_to}) {
                    m_is_looked_at[at(touched)] = 1;
                }
                return true;
            }
        }
        return false;
    }

    // The way from one node to another, or what remains of the ring if that is shorter.
    void reverse(int first, int last) {
        int from = m_places[at(first)];
        int to = m_places[at(last)];
        int count = to - from + 1;
        if (count <= 0) count += m_size;
        if (2 * count > m_size) {
            std::swap(from, to);
            from = (from + 1) % m_size;
            to = (to + m_size - 1) % m_size;
            count = m_size - count;
        }
        for (int i = 0; i < count / 2; ++i) {
            std::swap(m_ring[at(from)], m_ring[at(to)]);
            m_places[at(m_ring[at(from)])] = from;
            m_places[at(m_ring[at(to)])] = to;
            from = from + 1 == m_size ? 0 : from + 1;
            to = to == 0 ? m_size - 1 : to - 1;
        }
    }

    double length() const {
        double sum = 0.0;
        for (int node = 0; node < m_size; ++node) sum += leg(node, next(node));
        return sum;
    }

    const std::vector<giPoint3>& m_points;
    int m_size;
    std::vector<int> m_neighbours;
    std::vector<int> m_ring;
    std::vector<int> m_places;
    std::vector<char> m_is_looked_at;
    std::mt19937 m_words{1};
};

}  // namespace bare
