// The numbers of each kind of curve in a stream.
#include <ngk/ngkArc.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkCurveOnSurf3.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkNurbCurve.h>
#include <ngk/ngkPolyline.h>
#include <ngk/ngkReverseCurve.h>
#include <ngk/ngkTransformedCurve.h>

#include <array>

#include "knot_records.h"
#include "record_kinds.h"

namespace nmk_ngk {

namespace {

void write_plane(CArchive& archive, const giWorkplane3& plane) { archive << plane; }
void write_plane(CArchive& archive, const ngkAxes2& plane) {
    write_value(archive, vec_of(plane.origin));
    write_value(archive, vec_of(plane.x));
    write_value(archive, vec_of(plane.y));
}

void read_plane(CArchive& archive, giWorkplane3& plane) { archive >> plane; }
void read_plane(CArchive& archive, ngkAxes2& plane) {
    plane.origin = point_of(read_as<Vec<2>>(archive));
    plane.x = vector_of(read_as<Vec<2>>(archive));
    plane.y = vector_of(read_as<Vec<2>>(archive));
}

template <int Dimension>
auto read_points(CArchive& archive, std::uint64_t count) {
    const auto vecs = read_list<Vec<Dimension>>(archive, count);
    return points_of(std::span(vecs));
}

/// The control points of a Bezier or NURBS curve, then its weights.
template <class Curve>
void write_control_points(CArchive& archive, const Curve& curve, int count) {
    for (int i = 0; i < count; ++i) write_value(archive, vec_of(curve.point(i)));
    write_flag(archive, curve.is_rational());
    for (int i = 0; curve.is_rational() && i < count; ++i) archive << curve.weight(i);
}

template <int Dimension>
struct LineRecord {
    using Line = ngkLine<Dimension>;

    static void write(CArchive& archive, const Line& line, int /*nesting*/) {
        archive << static_cast<std::uint8_t>(line.kind());
        write_value(archive, vec_of(line.start()));
        const bool is_bounded = line.kind() == ngkLineKind::bounded;
        write_value(archive, is_bounded ? vec_of(line.end()) : vec_of(line.direction()));
    }
    static coPrf<const Line> read(CArchive& archive, int /*nesting*/) {
        std::uint8_t kind = 0;
        archive >> kind;
        require(kind <= static_cast<std::uint8_t>(ngkLineKind::infinite));
        const Vec<Dimension> start = read_as<Vec<Dimension>>(archive);
        const Vec<Dimension> second = read_as<Vec<Dimension>>(archive);
        if (kind == 0) return coPrf<const Line>(new Line(point_of(start), point_of(second)));
        const coPrf<const Line> line(
            new Line(point_of(start), vector_of(second), static_cast<ngkLineKind>(kind)));
        require(vec_of(line->direction()) == second);
        return line;
    }
};

template <int Dimension>
struct CircleRecord {
    using Circle = ngkCircle<Dimension>;

    static void write(CArchive& archive, const Circle& circle, int /*nesting*/) {
        write_plane(archive, circle.plane());
        archive << circle.radius();
        write_value(archive, circle.x_radius());
        write_value(archive, circle.y_radius());
    }
    static Circle read_circle(CArchive& archive) {
        typename Circle::Plane plane;
        read_plane(archive, plane);
        const double radius = read_as<double>(archive);
        const Vec<Dimension> x_radius = read_as<Vec<Dimension>>(archive);
        const Vec<Dimension> y_radius = read_as<Vec<Dimension>>(archive);
        return Circle(plane, radius, x_radius, y_radius);
    }
    static coPrf<const Circle> read(CArchive& archive, int /*nesting*/) {
        return coPrf<const Circle>(new Circle(read_circle(archive)));
    }
};

template <int Dimension>
struct ArcRecord {
    using Arc = ngkArc<Dimension>;

    static void write(CArchive& archive, const Arc& arc, int nesting) {
        CircleRecord<Dimension>::write(archive, arc.circle(), nesting);
        write_value(archive, arc.angles());
        write_value(archive, vec_of(arc.start()));
        write_value(archive, vec_of(arc.end()));
    }
    static coPrf<const Arc> read(CArchive& archive, int /*nesting*/) {
        const ngkCircle<Dimension> circle = CircleRecord<Dimension>::read_circle(archive);
        const ngkRange angles = read_as<ngkRange>(archive);
        const Vec<Dimension> start = read_as<Vec<Dimension>>(archive);
        const Vec<Dimension> end = read_as<Vec<Dimension>>(archive);
        return coPrf<const Arc>(new Arc(circle, angles, point_of(start), point_of(end)));
    }
};

template <int Dimension>
struct BezRecord {
    using Bez = ngkBezCurve<Dimension>;

    static void write(CArchive& archive, const Bez& curve, int /*nesting*/) {
        archive << static_cast<std::int32_t>(curve.degree());
        write_control_points(archive, curve, curve.degree() + 1);
    }
    static coPrf<const Bez> read(CArchive& archive, int /*nesting*/) {
        const std::uint64_t count = static_cast<std::uint64_t>(read_degree(archive)) + 1;
        const auto points = read_points<Dimension>(archive, count);
        return coPrf<const Bez>(new Bez(points, read_weights(archive, count)));
    }
};

template <int Dimension>
struct NurbRecord {
    using Nurb = ngkNurbCurve<Dimension>;

    static void write(CArchive& archive, const Nurb& curve, int /*nesting*/) {
        archive << static_cast<std::int32_t>(curve.degree());
        write_count(archive, static_cast<std::size_t>(curve.knot_count()));
        for (int i = 0; i < curve.knot_count(); ++i) archive << curve.knot(i);
        write_control_points(archive, curve, curve.point_count());
    }
    static coPrf<const Nurb> read(CArchive& archive, int /*nesting*/) {
        const ngkKnots knots = read_knots(archive);
        const std::uint64_t count = static_cast<std::uint64_t>(knots.point_count());
        const auto points = read_points<Dimension>(archive, count);
        const std::vector<double> weights = read_weights(archive, count);
        return coPrf<const Nurb>(new Nurb(knots.degree, knots.knots, points, weights));
    }
};

template <int Dimension>
struct PolylineRecord {
    using Polyline = ngkPolyline<Dimension>;

    static void write(CArchive& archive, const Polyline& polyline, int /*nesting*/) {
        write_count(archive, polyline.points().size());
        for (const auto& point : polyline.points()) write_value(archive, vec_of(point));
    }
    static coPrf<const Polyline> read(CArchive& archive, int /*nesting*/) {
        return coPrf<const Polyline>(
            new Polyline(read_points<Dimension>(archive, archive.ReadCount())));
    }
};

template <int Dimension>
struct CompRecord {
    using Comp = ngkCompCurve<Dimension>;

    static void write(CArchive& archive, const Comp& composite, int nesting) {
        archive << composite.tolerance();
        write_count(archive, static_cast<std::size_t>(composite.curve_count()));
        for (int i = 0; i < composite.curve_count(); ++i)
            write_inner<ngkCurve<Dimension>>(archive, composite.curve(i), nesting);
    }
    static coPrf<const Comp> read(CArchive& archive, int nesting) {
        const auto composite = std::make_shared<Comp>(read_as<double>(archive));
        for (std::uint32_t left = archive.ReadCount(); left > 0; --left) {
            const auto curve = read_inner<ngkCurve<Dimension>>(archive, nesting);
            require(composite->add_segment_end(curve) != 0);
        }
        return coPrf<const Comp>(std::shared_ptr<const Comp>(composite));
    }
};

template <int Dimension>
struct ReverseRecord {
    using Reverse = ngkReverseCurve<Dimension>;

    static void write(CArchive& archive, const Reverse& reversed, int nesting) {
        write_inner<ngkCurve<Dimension>>(archive, reversed.curve(), nesting);
    }
    static coPrf<const Reverse> read(CArchive& archive, int nesting) {
        return coPrf<const Reverse>(new Reverse(read_inner<ngkCurve<Dimension>>(archive, nesting)));
    }
};

template <int Dimension>
struct TransformedRecord {
    using Transformed = ngkTransformedCurve<Dimension>;
    using Xform = typename ngkSpace<Dimension>::Xform;

    static void write(CArchive& archive, const Transformed& transformed, int nesting) {
        for (const auto& row : transformed.xform().linear())
            for (const double entry : row) archive << entry;
        write_value(archive, vec_of(transformed.xform().translation()));
        write_inner<ngkCurve<Dimension>>(archive, transformed.curve(), nesting);
    }
    static coPrf<const Transformed> read(CArchive& archive, int nesting) {
        typename Xform::Matrix linear;
        for (auto& row : linear) row = read_as<Vec<Dimension>>(archive).c;
        const Vec<Dimension> translation = read_as<Vec<Dimension>>(archive);
        const auto curve = read_inner<ngkCurve<Dimension>>(archive, nesting);
        return coPrf<const Transformed>(
            new Transformed(curve, Xform(linear, vector_of(translation))));
    }
};

struct OnSurfRecord {
    static void write(CArchive& archive, const ngkCurveOnSurf3& curve, int nesting) {
        write_inner<ngkCurve2>(archive, curve.curve(), nesting);
        write_inner<ngkSurf>(archive, curve.surface(), nesting);
    }
    static coPrf<const ngkCurveOnSurf3> read(CArchive& archive, int nesting) {
        const ngkCurvePtr2 curve = read_inner<ngkCurve2>(archive, nesting);
        const ngkSurfPtr surface = read_inner<ngkSurf>(archive, nesting);
        return coPrf<const ngkCurveOnSurf3>(new ngkCurveOnSurf3(curve, surface));
    }
};

// Records name these classes, so a name is never given to another one.
const CRuntimeClass curve2_class = {"ngkCurve2", sizeof(ngkCurve2), nullptr};
const CRuntimeClass curve3_class = {"ngkCurve3", sizeof(ngkCurve3), nullptr};

template <int Dimension, template <int> class Curve, template <int> class Record>
RecordKind<ngkCurve<Dimension>> kind(const char* name_in_the_plane, const char* name_in_space) {
    const bool is_plane = Dimension == 2;
    return record_kind<ngkCurve<Dimension>, Curve<Dimension>, Record<Dimension>>(
        is_plane ? name_in_the_plane : name_in_space, is_plane ? &curve2_class : &curve3_class);
}

template <int Dimension>
std::array<RecordKind<ngkCurve<Dimension>>, 9> kinds_of_both() {
    return {kind<Dimension, ngkLine, LineRecord>("ngkLine2", "ngkLine3"),
            kind<Dimension, ngkCircle, CircleRecord>("ngkCircle2", "ngkCircle3"),
            kind<Dimension, ngkArc, ArcRecord>("ngkArc2", "ngkArc3"),
            kind<Dimension, ngkBezCurve, BezRecord>("ngkBezCurve2", "ngkBezCurve3"),
            kind<Dimension, ngkNurbCurve, NurbRecord>("ngkNurbCurve2", "ngkNurbCurve3"),
            kind<Dimension, ngkPolyline, PolylineRecord>("ngkPolyline2", "ngkPolyline3"),
            kind<Dimension, ngkCompCurve, CompRecord>("ngkCompCurve2", "ngkCompCurve3"),
            kind<Dimension, ngkReverseCurve, ReverseRecord>("ngkReverseCurve2", "ngkReverseCurve3"),
            kind<Dimension, ngkTransformedCurve, TransformedRecord>("ngkTransformedCurve2",
                                                                    "ngkTransformedCurve3")};
}

}  // namespace

template <>
RecordKinds<ngkCurve2> record_kinds<ngkCurve2>() {
    static const auto kinds = kinds_of_both<2>();
    return {&curve2_class, kinds};
}

template <>
RecordKinds<ngkCurve3> record_kinds<ngkCurve3>() {
    static const auto kinds = [] {
        std::array<RecordKind<ngkCurve3>, 10> all{};
        std::ranges::copy(kinds_of_both<3>(), all.begin());
        all.back() =
            record_kind<ngkCurve3, ngkCurveOnSurf3, OnSurfRecord>("ngkCurveOnSurf3", &curve3_class);
        return all;
    }();
    return {&curve3_class, kinds};
}

}  // namespace nmk_ngk
