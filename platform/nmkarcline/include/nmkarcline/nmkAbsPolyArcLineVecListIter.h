// nmkAbsPolyArcLineVecListIter.h: a list of paths to be drawn, with a cursor.
//
// A path is a sequence of points joined by straight lines, which is enough for diagnostic drawings.
#pragma once

#include <geometry/giPoint3.h>

#include <cstddef>
#include <utility>
#include <vector>

/// One path. A path of fewer than two points draws nothing.
struct nmkAbsPolyArcLineVec {
    std::vector<giPoint3> points;
};

/// The paths in order of insertion, and a cursor that starts at the first.
class nmkAbsPolyArcLineVecListIter {
  public:
    void insert_last(nmkAbsPolyArcLineVec path) { m_paths.push_back(std::move(path)); }
    int size() const noexcept { return static_cast<int>(m_paths.size()); }

    /// Moves the cursor back to the first path.
    void reset() noexcept { m_position = 0; }

    /// The path at the cursor, which then moves on; null at the end.
    const nmkAbsPolyArcLineVec* next() noexcept {
        return m_position < m_paths.size() ? &m_paths[m_position++] : nullptr;
    }

    auto begin() const noexcept { return m_paths.begin(); }
    auto end() const noexcept { return m_paths.end(); }

  private:
    std::vector<nmkAbsPolyArcLineVec> m_paths;
    std::size_t m_position = 0;
};
