// ngk_resource_table: the tolerances of the kernel, by key.
//
// One table for the process. Values may be read and set on any thread.
#pragma once

#include <geometry/giAngle.h>

#include <array>
#include <atomic>
#include <cstddef>

#pragma GCC visibility push(default)

/// A key, which knows the type of its value.
template <class Value>
struct ngkResourceKey {
    std::size_t index;
};

inline constexpr ngkResourceKey<double> ngk_TOLCOINCPOINT3D{
    0};  // coincident points in space: 1e-05
inline constexpr ngkResourceKey<double> ngk_TOLCOINCPOINT2D{1};  // in the plane: 1e-05
inline constexpr ngkResourceKey<giAngle> ngk_TOLZEROANGLE{2};    // 1e-04 radians

class ngkResourceTable {
  public:
    ngkResourceTable() noexcept;
    ngkResourceTable(const ngkResourceTable&) = delete;
    ngkResourceTable& operator=(const ngkResourceTable&) = delete;

    double value(const ngkResourceKey<double>& key) const noexcept { return m_values[key.index]; }
    giAngle value(const ngkResourceKey<giAngle>& key) const noexcept {
        return giAngle(giRadians, m_values[key.index]);
    }

    void set(const ngkResourceKey<double>& key, double value) noexcept {
        m_values[key.index] = value;
    }
    void set(const ngkResourceKey<giAngle>& key, const giAngle& value) noexcept {
        m_values[key.index] = value.angle(giRadians);
    }

    /// Gives all keys the values they had when the process began.
    void reset() noexcept;

  private:
    std::array<std::atomic<double>, 3> m_values;
};

/// The table of the process.
ngkResourceTable& ngk_resource_table_inquire() noexcept;

#pragma GCC visibility pop
