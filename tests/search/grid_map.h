// grid_map.h: grid maps and scenarios in the usual octile text format, and a Dijkstra of its own.
//
// A map is a head of four lines (type octile, height, width, map) and one line of letters for each
// row; '.' and 'G' can be walked. A scenario is a line "bucket map width height start-x start-y
// goal-x goal-y length". x counts letters, y counts rows.
#pragma once

#include <cmath>
#include <cstddef>
#include <fstream>
#include <functional>
#include <limits>
#include <queue>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace nmk_search::grid {

struct Cell {
    int x;
    int y;
};

struct Map {
    int width = 0;
    int height = 0;
    std::vector<std::string> rows;

    bool is_open(int x, int y) const {
        if (x < 0 || y < 0 || x >= width || y >= height) return false;
        const char letter = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
        return letter == '.' || letter == 'G';
    }
    std::size_t number(Cell cell) const {
        return static_cast<std::size_t>(cell.y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(cell.x);
    }
};

struct Scenario {
    Cell start;
    Cell goal;
    double length;  // without cutting corners, to about six digits
};

/// Whether a step in x, y or both passes an open cell only, and cuts no corner if that is asked.
struct StepRule {
    const Map& map;
    bool may_cut_corners;

    bool allows(Cell from, Cell to) const {
        if (!map.is_open(to.x, to.y)) return false;
        return may_cut_corners || (map.is_open(from.x, to.y) && map.is_open(to.x, from.y));
    }
};

/// An empty map when the file is not there.
inline Map read_map(const std::string& path) {
    std::ifstream in(path);
    std::string word, kind;
    Map map;
    if (!(in >> word >> kind >> word >> map.height >> word >> map.width >> word)) return {};
    for (std::string row; in >> row;) map.rows.push_back(row);
    return map;
}

inline std::vector<Scenario> read_scenarios(const std::string& path) {
    std::ifstream in(path);
    std::vector<Scenario> scenarios;
    std::string line, map;
    std::getline(in, line);
    while (std::getline(in, line)) {
        std::istringstream words(line);
        int bucket = 0, width = 0, height = 0;
        Scenario s{};
        words >> bucket >> map >> width >> height;
        words >> s.start.x >> s.start.y >> s.goal.x >> s.goal.y >> s.length;
        if (words) scenarios.push_back(s);
    }
    return scenarios;
}

/// The shortest length from `start` to `goal` by 8 neighbours; infinite when there is none.
inline double dijkstra(const StepRule& rule, Cell start, Cell goal) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const Map& map = rule.map;
    std::vector<double> best(static_cast<std::size_t>(map.width * map.height), infinity);
    using Entry = std::pair<double, std::size_t>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    best[map.number(start)] = 0.0;
    open.push({0.0, map.number(start)});
    while (!open.empty()) {
        const auto [cost, number] = open.top();
        open.pop();
        if (number == map.number(goal)) return cost;
        if (cost > best[number]) continue;
        const Cell at{static_cast<int>(number) % map.width, static_cast<int>(number) / map.width};
        for (int turn = 0; turn < 9; ++turn) {
            const Cell to{at.x + turn % 3 - 1, at.y + turn / 3 - 1};
            if (turn == 4 || !rule.allows(at, to)) continue;
            const double further = cost + std::hypot(to.x - at.x, to.y - at.y);
            if (further >= best[map.number(to)]) continue;
            best[map.number(to)] = further;
            open.push({further, map.number(to)});
        }
    }
    return infinity;
}

}  // namespace nmk_search::grid
