// The numbers of each kind of surface in a stream.
#include <ngk/ngkElementarySurfs.h>
#include <ngk/ngkNurbSurf.h>

#include "knot_records.h"
#include "record_kinds.h"

namespace nmk_ngk {

namespace {

giWorkplane3 read_plane(CArchive& archive) {
    giWorkplane3 plane;
    archive >> plane;
    return plane;
}

struct PlaneRecord {
    static void write(CArchive& archive, const ngkPlaneSurf& surface, int /*nesting*/) {
        archive << surface.plane();
    }
    static coPrf<const ngkPlaneSurf> read(CArchive& archive, int /*nesting*/) {
        return coPrf<const ngkPlaneSurf>(new ngkPlaneSurf(read_plane(archive)));
    }
};

/// A cylinder or a sphere.
template <class Surface>
struct RoundRecord {
    static void write(CArchive& archive, const Surface& surface, int /*nesting*/) {
        archive << surface.plane() << surface.radius();
    }
    static coPrf<const Surface> read(CArchive& archive, int /*nesting*/) {
        const giWorkplane3 plane = read_plane(archive);
        return coPrf<const Surface>(new Surface(plane, read_as<double>(archive)));
    }
};

struct BilinearRecord {
    static void write(CArchive& archive, const ngkBilinearSurf& surface, int /*nesting*/) {
        for (const giPoint3& corner : surface.corners()) write_value(archive, vec_of(corner));
    }
    static coPrf<const ngkBilinearSurf> read(CArchive& archive, int /*nesting*/) {
        std::array<giPoint3, 4> corners;
        for (giPoint3& corner : corners) corner = point_of(read_as<Vec<3>>(archive));
        return coPrf<const ngkBilinearSurf>(new ngkBilinearSurf(corners));
    }
};

struct NurbSurfRecord {
    static void write(CArchive& archive, const ngkNurbSurf& surface, int /*nesting*/) {
        write_knots(archive, surface.u_knots());
        write_knots(archive, surface.v_knots());
        const int rows = surface.u_knots().point_count();
        const int columns = surface.v_knots().point_count();
        for (int i = 0; i < rows; ++i)
            for (int j = 0; j < columns; ++j) write_value(archive, vec_of(surface.point(i, j)));
        write_flag(archive, surface.is_rational());
        for (int i = 0; surface.is_rational() && i < rows; ++i)
            for (int j = 0; j < columns; ++j) archive << surface.weight(i, j);
    }
    static coPrf<const ngkNurbSurf> read(CArchive& archive, int /*nesting*/) {
        const ngkKnots u = read_knots(archive);
        const ngkKnots v = read_knots(archive);
        const std::uint64_t count = static_cast<std::uint64_t>(u.point_count()) *
                                    static_cast<std::uint64_t>(v.point_count());
        const auto points = read_list<Vec<3>>(archive, count);
        const std::vector<double> weights = read_weights(archive, count);
        return coPrf<const ngkNurbSurf>(
            new ngkNurbSurf(u, v, points_of(std::span(points)), weights));
    }
};

// Records name these classes, so a name is never given to another one.
const CRuntimeClass surface_class = {"ngkSurf", sizeof(ngkSurf), nullptr};

template <class Surface, class Record>
RecordKind<ngkSurf> kind(const char* name) {
    return record_kind<ngkSurf, Surface, Record>(name, &surface_class);
}

}  // namespace

template <>
RecordKinds<ngkSurf> record_kinds<ngkSurf>() {
    static const std::array kinds = {
        kind<ngkPlaneSurf, PlaneRecord>("ngkPlaneSurf"),
        kind<ngkCylinderSurf, RoundRecord<ngkCylinderSurf>>("ngkCylinderSurf"),
        kind<ngkSphereSurf, RoundRecord<ngkSphereSurf>>("ngkSphereSurf"),
        kind<ngkBilinearSurf, BilinearRecord>("ngkBilinearSurf"),
        kind<ngkNurbSurf, NurbSurfRecord>("ngkNurbSurf")};
    return {&surface_class, kinds};
}

}  // namespace nmk_ngk
