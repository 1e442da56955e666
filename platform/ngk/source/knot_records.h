// knot_records: degrees and knots in a stream.
#pragma once

#include <ngk/ngkBezCurve.h>
#include <ngk/ngkNurbSurf.h>

#include "control_points.h"
#include "record_values.h"

namespace nmk_ngk {

inline int read_degree(CArchive& archive) {
    std::int32_t degree = 0;
    archive >> degree;
    require(degree >= 1 && degree <= ngk_max_degree);
    return degree;
}

inline void write_knots(CArchive& archive, const ngkKnots& knots) {
    archive << static_cast<std::int32_t>(knots.degree);
    write_count(archive, knots.knots.size());
    write_list(archive, knots.knots);
}

/// As many knots as some control points can have; they decide how many of those follow.
inline ngkKnots read_knots(CArchive& archive) {
    ngkKnots knots;
    knots.degree = read_degree(archive);
    const std::uint32_t count = archive.ReadCount();
    const std::uint32_t least = 2 * static_cast<std::uint32_t>(knots.degree) + 2;
    require(count >= least && count <= INT32_MAX);
    knots.knots = read_list<double>(archive, count);
    return knots;
}

}  // namespace nmk_ngk
