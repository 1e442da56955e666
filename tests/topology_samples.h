// topology_samples.h: parts of a boundary, for the tests and the fuzz target.
#pragma once

#include <ngk/ngkArc.h>
#include <ngk/ngkElementarySurfs.h>
#include <ngk/ngkLine.h>
#include <topology/topShell.h>

#include <vector>

namespace topology_samples {

inline topVertexPtr vertex(double x, double y, double z) {
    return topVertexPtr(new topVertex(giPoint3(x, y, z), 1e-6));
}

inline topEdgePtr line(const topVertexPtr& start, const topVertexPtr& end) {
    return topEdgePtr(
        new topEdge(ngkCurvePtr3(new ngkLine3(start->point(), end->point())), start, end));
}

inline topLoopPtr loop(std::vector<topEdgeUse> uses) {
    return topLoopPtr(new topLoop(std::move(uses)));
}

/// A circle about the origin, closed in one vertex.
inline topEdgePtr circle(double radius) {
    const ngkCircle3 around(giWorkplane3(), radius);
    const topVertexPtr start = vertex(radius, 0, 0);
    return topEdgePtr(new topEdge(ngkCurvePtr3(new ngkCircle3(around)), start, start));
}

/// The disc of radius 2 with a hole of radius 1.
inline topFacePtr ring() {
    return topFacePtr(new topFace(ngkSurfPtr(new ngkPlaneSurf(giWorkplane3())), false,
                                  {loop({{circle(2.0), false}}), loop({{circle(1.0), true}})}));
}

/// Four triangles that share six edges and four vertices, closed; or only the first of them.
inline topShellPtr tetrahedron(std::size_t faces = 4) {
    const std::vector<topVertexPtr> at = {vertex(0, 0, 0), vertex(1, 0, 0), vertex(0, 1, 0),
                                          vertex(0, 0, 1)};
    const topEdgePtr ab = line(at[0], at[1]);
    const topEdgePtr ac = line(at[0], at[2]);
    const topEdgePtr ad = line(at[0], at[3]);
    const topEdgePtr bc = line(at[1], at[2]);
    const topEdgePtr bd = line(at[1], at[3]);
    const topEdgePtr cd = line(at[2], at[3]);
    const auto face = [](const topLoopPtr& around) {
        const giPoint3 origin = around->uses()[0].start()->point();
        const giVector3 along = around->uses()[0].end()->point() - origin;
        const giVector3 across = around->uses()[1].end()->point() - origin;
        const giWorkplane3 plane(origin, giUnitVec3(along), giUnitVec3(along.cross(across)));
        return topFacePtr(new topFace(ngkSurfPtr(new ngkPlaneSurf(plane)), false, {around}));
    };
    std::vector<topFacePtr> all = {face(loop({{ac, false}, {bc, true}, {ab, true}})),
                                   face(loop({{ab, false}, {bd, false}, {ad, true}})),
                                   face(loop({{ad, false}, {cd, true}, {ac, true}})),
                                   face(loop({{bc, false}, {cd, false}, {bd, true}}))};
    all.resize(faces);
    return topShellPtr(new topShell(all));
}

}  // namespace topology_samples
