// plain_grid.h: a grid, and the lengths of its shortest paths by Dijkstra's algorithm.
//
// Written from the rules of the steps alone: no estimate, no call of the library, cells as numbers.
// It shares no code with the reader of maps either.
#pragma once

#include <cmath>
#include <functional>
#include <limits>
#include <queue>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

struct PlainGrid {
    int width = 0, height = 0;
    std::vector<bool> blocked;
    double step_x = 1.0, step_y = 1.0;
    bool cut_corners = false;
    bool forward = false;

    static constexpr double unreachable = std::numeric_limits<double>::infinity();

    /// Rows of letters, '.' free and anything else blocked.
    static PlainGrid of_rows(const std::vector<std::string>& rows) {
        PlainGrid grid;
        grid.height = static_cast<int>(rows.size());
        grid.width = static_cast<int>(rows.at(0).size());
        for (const std::string& row : rows) {
            for (const char letter : row) grid.blocked.push_back(letter != '.');
        }
        return grid;
    }

    /// The text of a map of '.' and letters that are blocked.
    static PlainGrid of_map(const std::string& text) {
        std::istringstream lines(text);
        std::string line;
        while (std::getline(lines, line) && line != "map") {
        }
        std::vector<std::string> rows;
        while (std::getline(lines, line)) rows.push_back(line);
        return of_rows(rows);
    }

    bool is_free(int x, int y) const {
        return x >= 0 && y >= 0 && x < width && y < height && !blocked[index(x, y)];
    }

    /// The length of the shortest path from (x, y) to every cell.
    std::vector<double> lengths_from(int x, int y) const {
        std::vector<double> best(blocked.size(), unreachable);
        using Entry = std::pair<double, std::size_t>;
        std::priority_queue<Entry, std::vector<Entry>, std::greater<>> queue;
        best[index(x, y)] = 0.0;
        queue.push({0.0, index(x, y)});
        while (!queue.empty()) {
            const auto [length, at] = queue.top();
            queue.pop();
            if (length > best[at]) continue;
            const int from_x = static_cast<int>(at % static_cast<std::size_t>(width));
            const int from_y = static_cast<int>(at / static_cast<std::size_t>(width));
            for (int dx = forward ? 1 : -1; dx <= 1; ++dx) {
                for (int dy = -1; dy <= 1; ++dy) {
                    if (!may_step(from_x, from_y, dx, dy)) continue;
                    const double longer = length + std::hypot(dx * step_x, dy * step_y);
                    const std::size_t to = index(from_x + dx, from_y + dy);
                    if (longer < best[to]) {
                        best[to] = longer;
                        queue.push({longer, to});
                    }
                }
            }
        }
        return best;
    }

    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }

  private:
    bool may_step(int x, int y, int dx, int dy) const {
        if ((dx == 0 && dy == 0) || !is_free(x + dx, y + dy)) return false;
        const bool is_clear = is_free(x + dx, y) && is_free(x, y + dy);
        return cut_corners || dx == 0 || dy == 0 || is_clear;
    }
};
