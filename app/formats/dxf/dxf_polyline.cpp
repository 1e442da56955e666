// dxf_polyline: the curve of a LWPOLYLINE, or of a POLYLINE with its VERTEX entities.

#include "formats/dxf/dxf_polyline.h"

#include <ngk/ngkArc.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngk_resource_table.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <algorithm>
#include <cmath>

#include "formats/dxf/scaled_point.h"
#include "text/number_format.h"

namespace nmk_dxf {

namespace {

// Flags of group 70 of a polyline, and of its vertices.
constexpr int is_closed = 1;
constexpr int is_in_space = 8;
constexpr int is_mesh = 16 | 64;
constexpr int is_spline_frame = 16;

// The ends of neighbours are the same point; the kernel allows for its rounding.
constexpr double join_tolerance = 1e-3;

struct Vertex {
    giPoint3 place;  // in millimetres, of the world
    double bulge = 0.0;
};

/// The arc from one vertex to the next: through the middle of its chord, moved to the right by the
/// bulge times half the chord. A line for a bulge so small that the middle is on the chord; empty
/// for one so large that the chord has no length beside the arc.
ngkCurvePtr3 segment_between(const Vertex& from, const giPoint3& to, const giVector3& normal) {
    if (from.bulge == 0.0) return nmkNgkMakeUtils::make_line(from.place, to);
    const giVector3 half = (to - from.place) * 0.5;
    const giVector3 right = half.cross(normal);
    const ngkCurvePtr3 arc =
        nmkNgkMakeUtils::make_arc(from.place, from.place + half + right * from.bulge, to);
    const bool is_arc = dynamic_cast<const ngkArc3*>(arc.get()) != nullptr;
    return is_arc || std::abs(from.bulge) < 1.0 ? arc : ngkCurvePtr3();
}

Shape straight(const std::vector<Vertex>& vertices) {
    giPoint3coDynArr points;
    for (const Vertex& vertex : vertices) points.add(vertex.place);
    const ngkCurvePtr3 curve = nmkNgkMakeUtils::make_polyline(points);
    if (!curve || curve->length() == 0.0) return NoCurve{"without length"};
    return curve;
}

Shape with_arcs(const std::vector<Vertex>& vertices, const giVector3& normal, std::size_t line) {
    if (vertices.size() > max_vertices_with_bulges) {
        refuse(line, "a polyline with bulges has more than " +
                         std::to_string(max_vertices_with_bulges) + " vertices");
    }
    const auto composite = coPrf<ngkCompCurve3>(new ngkCompCurve3(join_tolerance));
    const double coincident = ngk_resource_table_inquire().value(ngk_TOLCOINCPOINT3D);
    Vertex from = vertices.front();
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        if (!from.place.coincident(vertices[i].place, coincident)) {
            const ngkCurvePtr3 part = segment_between(from, vertices[i].place, normal);
            if (!part || !composite->add_segment_end(part)) {
                refuse(line, "the bulge " + nmk_text::exact_number(from.bulge) +
                                 " of a vertex makes no arc");
            }
            from.place = vertices[i].place;
        }
        from.bulge = vertices[i].bulge;
    }
    if (composite->curve_count() == 0) return NoCurve{"without length"};
    return ngkCurvePtr3(composite);
}

Shape curve_of(std::vector<Vertex> vertices, bool closed, const giVector3& normal,
               std::size_t line) {
    if (vertices.size() < 2) return NoCurve{"without length"};
    if (closed) vertices.push_back({vertices.front().place, 0.0});
    const bool has_arcs = std::any_of(vertices.begin(), vertices.end() - 1,
                                      [](const Vertex& vertex) { return vertex.bulge != 0.0; });
    return has_arcs ? with_arcs(vertices, normal, line) : straight(vertices);
}

}  // namespace

Shape light_polyline_of(const DxfEntity& entity, double mm) {
    const giWorkplane3 plane = entity.plane();
    const double elevation = entity.number(38, 0.0);
    std::vector<giPoint3> places;
    std::vector<double> bulges;
    for (const DxfGroup& group : entity.groups) {
        if (group.code == 10) {
            places.emplace_back(number_of(group), 0.0, elevation);
            bulges.push_back(0.0);
        } else if (group.code == 20 || group.code == 42) {
            if (places.empty()) refuse(group.line, "expected the x of a vertex, group 10, first");
            (group.code == 20 ? places.back().y : bulges.back()) = number_of(group);
        }
    }
    std::vector<Vertex> vertices;
    for (std::size_t i = 0; i < places.size(); ++i) {
        vertices.push_back({scaled(plane.to_world(places[i]), mm), bulges[i]});
    }
    const bool closed = (entity.whole_number(70, 0) & is_closed) != 0;
    return curve_of(std::move(vertices), closed, plane.z_axis().vector(), entity.line);
}

Shape polyline_of(const DxfEntity& entity, const std::vector<DxfEntity>& vertices, double mm) {
    const int flags = entity.whole_number(70, 0);
    if ((flags & is_mesh) != 0) return NoCurve{"that is a mesh"};
    const bool in_space = (flags & is_in_space) != 0;
    const giWorkplane3 plane = in_space ? giWorkplane3() : entity.plane();
    const double elevation = in_space ? 0.0 : entity.number(30, 0.0);
    std::vector<Vertex> places;
    for (const DxfEntity& vertex : vertices) {
        if ((vertex.whole_number(70, 0) & is_spline_frame) != 0) continue;
        giPoint3 place = vertex.point(10);
        if (!in_space) place.z = elevation;
        const double bulge = in_space ? 0.0 : vertex.number(42, 0.0);
        places.push_back({scaled(plane.to_world(place), mm), bulge});
    }
    return curve_of(std::move(places), (flags & is_closed) != 0, plane.z_axis().vector(),
                    entity.line);
}

}  // namespace nmk_dxf
