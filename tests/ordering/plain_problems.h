// plain_problems.h: generated inputs for the annealing, and access to the fields of its objects.
#pragma once

#include <geometry/giPoint3Arrays.h>
#include <nmktoolbox/ordering.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "ordering/plain_anneal.h"

namespace plain {

enum class Spread { square, space, grid, coincident, far, tiny, line };

inline const char* name_of(Spread spread) {
    const char* const names[] = {"square", "space", "grid", "coincident", "far", "tiny", "line"};
    return names[static_cast<int>(spread)];
}

// `n` points; a grid is full of ties, far points lose digits.
inline std::vector<Point> spread_points(Spread spread, int n, std::uint32_t seed) {
    std::mt19937 words(seed);
    const auto unit = [&words] { return static_cast<double>(words()) / 4294967296.0; };
    std::vector<Point> points;
    for (int k = 0; k < n; ++k) {
        const double x = unit(), y = unit(), z = unit();
        switch (spread) {
            case Spread::square:
                points.push_back({100 * x, 100 * y, 0.0});
                break;
            case Spread::space:
                points.push_back({100 * x, 100 * y, 100 * z});
                break;
            case Spread::grid:
                points.push_back(
                    {static_cast<double>(words() % 5), static_cast<double>(k % 4), 2.0});
                break;
            case Spread::coincident:
                points.push_back({3.0, 4.0, 5.0});
                break;
            case Spread::far:
                points.push_back({1e12 + 10 * x, -1e12 + 10 * y, 1e9 * z});
                break;
            case Spread::tiny:
                points.push_back({1e-160 * x, 1e-160 * y, 0.0});
                break;
            case Spread::line:
                points.push_back({100 * x, 0.0, 0.0});
                break;
        }
    }
    return points;
}

inline giPoint3coPageArr paged(const std::vector<Point>& points) {
    giPoint3coPageArr array;
    for (const Point& p : points) array.add(giPoint3(p.x, p.y, p.z));
    return array;
}

// The ends of `n` lines.
struct TwoArrays {
    TwoArrays(Spread spread, int n, std::uint32_t seed)
        : starts(plain::paged(plain::spread_points(spread, n, seed))),
          ends(plain::paged(plain::spread_points(spread, n, seed + 1))) {}
    giPoint3coPageArr starts, ends;
};

// The fields of an order state, through pointers to members that a derived class may name.
struct Inside : nmkAnnealOrderState {
    static std::uint32_t word(const nmkAnnealOrderState& s) { return (s.*(&Inside::random)).word; }
    static void set_word(nmkAnnealOrderState& s, std::uint32_t w) {
        (s.*(&Inside::random)).word = w;
    }
    static double length_of(const nmkAnnealOrderState& s) { return s.*(&Inside::distance_value); }
    static double candidate(const nmkAnnealOrderState& s) {
        return s.*(&Inside::candidate_distance);
    }
    static int first(const nmkAnnealOrderState& s) { return s.*(&Inside::candidate_1); }
    static int second(const nmkAnnealOrderState& s) { return s.*(&Inside::candidate_2); }
};

inline std::vector<int> items_of(const nmkAnnealOrderState& state) {
    intcoFixedArr items;
    state.get_items(items);
    return {items.begin(), items.end()};
}

inline std::vector<int> reversed_by_item(const nmkAnnealStateReversibleLines& state) {
    intcoFixedArr items, reversed;
    state.get_items(items);
    state.get_reverse_flags(reversed);
    std::vector<int> result(static_cast<std::size_t>(items.size()));
    for (int k = 0; k < items.size(); ++k) result[static_cast<std::size_t>(items[k])] = reversed[k];
    return result;
}

// The engine, with its fields made public.
struct Engine : nmkAnneal {
    using nmkAnneal::best_energy;
    using nmkAnneal::current_energy;
    using nmkAnneal::nmkAnneal;
    using nmkAnneal::probability;
    using nmkAnneal::random;
    using nmkAnneal::start_temperature;
    using nmkAnneal::temperature;
};

}  // namespace plain
