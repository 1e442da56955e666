// shaded_view: the image of a model seen from a side, with its scale.

#include "commands/model/shaded_view.h"

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace nmk_model {

namespace {

constexpr double samples = MeshRaster::samples_a_pixel;

// Pixels around the model, for the lines at its rim.
constexpr double margin = 8.0;

// A model without width or height gets an image of this many pixels there.
constexpr double min_side = 48.0;

// How much lighter the lightest triangle is than the darkest, which has the rest.
constexpr double shaded_part = 0.5;

// Lines are lifted by this part of the model's largest size, so that the triangles beside them do
// not hide them.
constexpr double line_lift = 0.002;

constexpr int sharp_width = 4;  // in samples
constexpr int free_width = 10;
constexpr int hidden_width = 6;
constexpr int hidden_dash = 20;

// So many samples of triangles that face away are an opening; fewer are rounding at the rim.
constexpr std::int64_t min_inside = 16;

// Work between two reports, in samples.
constexpr std::int64_t work_between_reports = 4'000'000;

constexpr std::size_t triangles_between_reports = 100'000;

/// From model to samples.
class Projection {
  public:
    Projection(const WeldedMesh& mesh, ViewSide side, ImageSize largest) : m_axes(view_axes(side)) {
        for (const giPoint3& node : mesh.nodes) m_box.add(in_view(node));
        const double width = m_box.max().x - m_box.min().x;
        const double height = m_box.max().y - m_box.min().y;
        const double room_x = largest.width - 2 * margin;
        const double room_y = largest.height - 2 * margin;
        m_scale = std::min(width > 0.0 ? room_x / width : room_x,
                           height > 0.0 ? room_y / height : room_y);
        if (width <= 0.0 && height <= 0.0) m_scale = 1.0;
        m_size.width = pixels(width);
        m_size.height = pixels(height);
        const giVector3 size = m_box.max() - m_box.min();
        m_lift = std::max({size.x, size.y, size.z}) * line_lift * m_scale * samples;
        m_middle = {(m_box.min().x + m_box.max().x) / 2, (m_box.min().y + m_box.max().y) / 2,
                    (m_box.min().z + m_box.max().z) / 2};
    }

    SamplePoint operator()(const giPoint3& node) const {
        const giPoint3 at = in_view(node);
        const double scale = m_scale * samples;
        return {m_size.width * samples / 2 + (at.x - m_middle.x) * scale,
                m_size.height * samples / 2 - (at.y - m_middle.y) * scale,
                (at.z - m_middle.z) * scale};
    }

    ImageSize size() const { return m_size; }
    double scale() const { return m_scale; }
    double lift() const { return m_lift; }
    const ViewAxes& axes() const { return m_axes; }

  private:
    giPoint3 in_view(const giPoint3& node) const {
        const giVector3 at(node.x, node.y, node.z);
        return {m_axes.right.dot(at), m_axes.up.dot(at), m_axes.towards.dot(at)};
    }

    int pixels(double length) const {
        return static_cast<int>(std::ceil(std::max(length * m_scale + 2 * margin, min_side)));
    }

    ViewAxes m_axes;
    giBox3 m_box;  // of the model in the view
    giPoint3 m_middle;
    ImageSize m_size;
    double m_scale = 1.0;  // pixels for a millimetre
    double m_lift = 0.0;   // in samples
};

/// Light from the upper left behind the viewer, as a unit vector in the view.
giVector3 light_in(const ViewAxes& axes) {
    constexpr double right = -0.36;
    constexpr double up = 0.48;
    constexpr double towards = 0.8;
    return axes.right * right + axes.up * up + axes.towards * towards;
}

class ViewPainter {
  public:
    ViewPainter(const WeldedMesh& mesh, ViewSide side, ImageSize largest,
                nmkProgressBreak& progress)
        : m_mesh(mesh),
          m_project(mesh, side, largest),
          m_light(light_in(m_project.axes())),
          m_raster(m_project.size().width, m_project.size().height),
          m_progress(progress) {
        m_places.reserve(mesh.nodes.size());
        for (const giPoint3& node : mesh.nodes) m_places.push_back(m_project(node));
    }

    std::optional<ShadedView> paint(const DrawnEdges& edges) {
        const std::size_t items =
            2 * m_mesh.triangles.size() + edges.sharp.size() + 2 * edges.free.size();
        m_progress.send_progress_bar_to_0("Drawing");
        m_progress.set_range(static_cast<double>(items));
        draw_triangles(Facing::viewer);
        // What is drawn behind all others shows through openings only.
        const bool shows_inside = draw_triangles(Facing::away) >= min_inside;
        const MeshRaster::Pen sharp{sharp_edge_colour, sharp_width, m_project.lift(), false};
        const MeshRaster::Pen hidden{hidden_edge_colour, hidden_width, m_project.lift(), true,
                                     hidden_dash};
        const MeshRaster::Pen free{free_edge_colour, free_width, m_project.lift(), false};
        const bool shows_sharp = draw_lines(edges.sharp, sharp) > 0;
        const bool has_hidden = draw_lines(edges.free, hidden) > 0;
        draw_lines(edges.free, free);
        m_progress.send_progress_bar_to_100();
        if (m_is_stopped) return std::nullopt;
        return ShadedView{m_raster.image(), m_project.scale(), shows_sharp, shows_inside,
                          has_hidden};
    }

  private:
    enum class Facing { viewer, away };

    /// Draws the triangles that face so; returns the number of samples.
    std::int64_t draw_triangles(Facing facing) {
        std::int64_t drawn = 0;
        for (std::size_t i = 0; i < m_mesh.triangles.size() && goes_on(); ++i) {
            const giVector3 normal = m_mesh.normal(i);
            const bool is_away = m_project.axes().towards.dot(normal) < 0.0;
            if (is_away == (facing == Facing::away)) drawn += draw_triangle(i, normal, facing);
        }
        return drawn;
    }

    std::int64_t draw_triangle(std::size_t i, const giVector3& normal, Facing facing) {
        const double length = std::sqrt(normal.dot(normal));
        if (!(length > 0.0)) return 0;
        const bool is_away = facing == Facing::away;
        const double light = std::max(m_light.dot(normal) / length * (is_away ? -1.0 : 1.0), 0.0);
        const MeshTriangle& triangle = m_mesh.triangles[i];
        return m_raster.draw_triangle(m_places[triangle[0]], m_places[triangle[1]],
                                      m_places[triangle[2]],
                                      shaded(is_away ? inside_colour : outside_colour, light));
    }

    static Colour shaded(const Colour& base, double light) {
        const double factor = 1.0 - shaded_part + shaded_part * light;
        const double white = 0.18 * light * light * light;  // a soft gloss
        Colour colour{};
        for (std::size_t i = 0; i < base.size(); ++i) {
            const double value = base[i] * factor;
            colour[i] = static_cast<std::uint8_t>(value + (255.0 - value) * white + 0.5);
        }
        return colour;
    }

    /// Returns the number of samples.
    std::int64_t draw_lines(const std::vector<EdgeEnds>& edges, const MeshRaster::Pen& pen) {
        std::int64_t drawn = 0;
        for (std::size_t i = 0; i < edges.size() && goes_on(); ++i) {
            drawn += m_raster.draw_line(m_places[edges[i].first], m_places[edges[i].second], pen);
        }
        return drawn;
    }

    /// Counts an item, and reports after much work or many items.
    bool goes_on() {
        ++m_items;
        const bool is_due = m_raster.work() - m_reported >= work_between_reports ||
                            m_items % triangles_between_reports == 0;
        if (is_due && !m_is_stopped) {
            m_reported = m_raster.work();
            m_is_stopped = m_progress.jump_to(static_cast<double>(m_items)) != 0;
        }
        return !m_is_stopped;
    }

    const WeldedMesh& m_mesh;
    Projection m_project;
    giVector3 m_light;
    MeshRaster m_raster;
    nmkProgressBreak& m_progress;
    std::vector<SamplePoint> m_places;  // of the nodes
    std::size_t m_items = 0;
    std::int64_t m_reported = 0;  // the work at the last report
    bool m_is_stopped = false;
};

}  // namespace

std::optional<ShadedView> shaded_view(const WeldedMesh& mesh, const DrawnEdges& edges,
                                      ViewSide side, ImageSize largest,
                                      nmkProgressBreak& progress) {
    return ViewPainter(mesh, side, largest, progress).paint(edges);
}

}  // namespace nmk_model
