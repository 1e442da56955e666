// nmkDebugGeometry.h: named channels to which algorithms send drawings of what they are doing.
//
// A channel is off until it is switched on by name, and while it is off it costs one read of an
// integer. Drawings that are sent to a channel that is on are kept in memory until it is cleared,
// and can be written as one SVG file. Channels exist until the process ends, and may be used from
// any thread.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>
#include <nmkarcline/nmkAbsPolyArcLineVecListIter.h>
#include <nmkarcline/nmkDebugGeometryUtils.h>

#include <atomic>
#include <iosfwd>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

/// One channel. Each drawing has a label, which groups drawings, and a level of detail. A channel
/// that is on at a level takes the drawings of that level and below.
class nmkDebugGeometry {
  public:
    nmkDebugGeometry(const nmkDebugGeometry&) = delete;
    nmkDebugGeometry& operator=(const nmkDebugGeometry&) = delete;

    /// The channel of a name, created on first use. Null is taken as the empty name.
    static nmkDebugGeometry& get_from_manager(const char* channel);

    /// 1 when drawings of `level` are taken, else 0. Levels count from 1.
    int on(int level) const noexcept;

    /// Takes drawings up to `level` from now on; below 1 switches off.
    void switch_on(int level) noexcept;
    void switch_off() noexcept;

    /// A circle about `axis`; the radius is in the unit of the points.
    void append_circle_drawing(const giPoint3& centre, double radius, const giUnitVec3& axis,
                               const char* label, int level);

    /// A cross in the xy plane, `size` from end to end.
    ///
    ///   colour   index into a small palette, taken modulo its length
    ///   weight   width of the line in pixels, at least 1
    void append_cross_drawing(const giPoint3& centre, double size, int colour, int weight,
                              const char* label, int level);

    /// Keeps a copy of every path of the list, wherever the cursor of the list is.
    void copy_iter(const nmkAbsPolyArcLineVecListIter& paths, const char* label, int level);

    /// Number of drawings kept.
    int size() const;

    /// Removes the drawings; the channel stays on or off.
    void clear();

    /// Writes the drawings that are kept as an SVG file seen down the z axis, y upwards, a group
    /// for each label. Drawings with unset or non-finite coordinates are left out. False when the
    /// file cannot be written whole; then there is no file, or the previous one is kept.
    bool write_svg(const std::string& path) const;
    void write_svg(std::ostream& out) const;

  private:
    struct Drawing {
        std::string label;
        std::vector<nmkAbsPolyArcLineVec> paths;
        int colour;
        int weight;
    };

    nmkDebugGeometry() = default;
    void keep(Drawing drawing);

    std::atomic<int> m_level{0};
    mutable std::mutex m_guard;  // of the drawings
    std::vector<Drawing> m_drawings;
};

#pragma GCC visibility pop
