#include "debug_picture.h"

#include <exactmath/exact_sine.h>
#include <filesystem/safe_file.h>
#include <nmkarcline/nmkDebugGeometry.h>

#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <numbers>
#include <sstream>

namespace {

constexpr mode_t default_mode = 0666;  // of a drawing, less the umask
constexpr int circle_corners = 72;     // a circle is drawn as a polygon of this many corners

const char* text_of(const char* label) { return label != nullptr ? label : ""; }

bool is_drawable(const nmkAbsPolyArcLineVec& path) {
    for (const giPoint3& point : path.points) {
        if (!point.is_set() || !std::isfinite(point.x) || !std::isfinite(point.y)) return false;
    }
    return path.points.size() >= 2;
}

// Two directions of length 1 that span the plane square to `axis`.
std::array<std::array<double, 3>, 2> directions_square_to(const giUnitVec3& axis) {
    const bool is_steep = std::fabs(axis.z) > 0.5;
    const double length = is_steep ? std::sqrt(axis.z * axis.z + axis.x * axis.x)
                                   : std::sqrt(axis.x * axis.x + axis.y * axis.y);
    if (!(length > 0.0)) return {{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}}};
    const std::array<double, 3> first =
        is_steep ? std::array<double, 3>{axis.z / length, 0.0, -axis.x / length}
                 : std::array<double, 3>{-axis.y / length, axis.x / length, 0.0};
    const std::array<double, 3> second = {axis.y * first[2] - axis.z * first[1],
                                          axis.z * first[0] - axis.x * first[2],
                                          axis.x * first[1] - axis.y * first[0]};
    return {first, second};
}

nmkAbsPolyArcLineVec circle_path(const giPoint3& centre, double radius, const giUnitVec3& axis) {
    const auto [first, second] = directions_square_to(axis);
    nmkAbsPolyArcLineVec path;
    for (int corner = 0; corner <= circle_corners; ++corner) {
        const double turn = 2.0 * std::numbers::pi * (corner % circle_corners) / circle_corners;
        const double along = radius * nmk_exact::exact_cos(turn);
        const double across = radius * nmk_exact::exact_sin(turn);
        path.points.emplace_back(centre.x + along * first[0] + across * second[0],
                                 centre.y + along * first[1] + across * second[1],
                                 centre.z + along * first[2] + across * second[2]);
    }
    return path;
}

}  // namespace

nmkDebugGeometry& nmkDebugGeometry::get_from_manager(const char* channel) {
    // Never deleted: threads and static objects may still draw while the process ends.
    static auto* const guard = new std::mutex;
    static auto* const channels =
        new std::map<std::string, std::unique_ptr<nmkDebugGeometry>, std::less<>>;
    const std::lock_guard<std::mutex> lock(*guard);
    auto& found = (*channels)[text_of(channel)];
    if (found == nullptr) found.reset(new nmkDebugGeometry);
    return *found;
}

int nmkDebugGeometry::on(int level) const noexcept {
    return level >= 1 && level <= m_level.load(std::memory_order_relaxed) ? 1 : 0;
}

void nmkDebugGeometry::switch_on(int level) noexcept { m_level.store(level > 0 ? level : 0); }

void nmkDebugGeometry::switch_off() noexcept { m_level.store(0); }

void nmkDebugGeometry::append_circle_drawing(const giPoint3& centre, double radius,
                                             const giUnitVec3& axis, const char* label, int level) {
    if (on(level) == 0) return;
    keep({text_of(label), {circle_path(centre, radius, axis)}, 0, 1});
}

void nmkDebugGeometry::append_cross_drawing(const giPoint3& centre, double size, int colour,
                                            int weight, const char* label, int level) {
    if (on(level) == 0) return;
    const double half = 0.5 * size;
    nmkAbsPolyArcLineVec level_bar{{giPoint3(centre.x - half, centre.y, centre.z),
                                    giPoint3(centre.x + half, centre.y, centre.z)}};
    nmkAbsPolyArcLineVec upright_bar{{giPoint3(centre.x, centre.y - half, centre.z),
                                      giPoint3(centre.x, centre.y + half, centre.z)}};
    keep({text_of(label), {std::move(level_bar), std::move(upright_bar)}, colour, weight});
}

void nmkDebugGeometry::copy_iter(const nmkAbsPolyArcLineVecListIter& paths, const char* label,
                                 int level) {
    if (on(level) == 0) return;
    for (const nmkAbsPolyArcLineVec& path : paths) keep({text_of(label), {path}, 0, 1});
}

void nmkDebugGeometry::keep(Drawing drawing) {
    const std::lock_guard<std::mutex> lock(m_guard);
    m_drawings.push_back(std::move(drawing));
}

int nmkDebugGeometry::size() const {
    const std::lock_guard<std::mutex> lock(m_guard);
    return static_cast<int>(m_drawings.size());
}

void nmkDebugGeometry::clear() {
    const std::lock_guard<std::mutex> lock(m_guard);
    m_drawings.clear();
}

void nmkDebugGeometry::write_svg(std::ostream& out) const {
    nmk_arcline::DebugPicture picture;
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        for (const Drawing& drawing : m_drawings) {
            for (const nmkAbsPolyArcLineVec& path : drawing.paths) {
                if (!is_drawable(path)) continue;
                picture.add(drawing.label, path, drawing.colour, drawing.weight);
            }
        }
    }
    picture.write(out);
}

bool nmkDebugGeometry::write_svg(const std::string& path) const {
    std::ostringstream drawing;
    write_svg(drawing);
    nmk_filesystem::SafeFile file;
    return file.create(path, default_mode) == 0 && file.write(drawing.view()) == 0 &&
           file.commit(nmk_filesystem::SafeFile::Existing::replaced) == 0;
}
