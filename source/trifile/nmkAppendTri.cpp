#include <nmktoolbox/trifile/nmkAppendTri.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "raised_triangle.h"

namespace {

// The squared length of a facet normal. At most this: it is stored as it came out.
constexpr double normal_is_zero = 1.0000000000000002e-10;

// A magnitude of at least this is refused.
constexpr double too_large = std::numeric_limits<double>::max();

giVector3 facet_normal(const giPoint3& p1, const giPoint3& p2, const giPoint3& p3) {
    const giVector3 normal = (p2 - p1).cross(p3 - p1);
    const double square = normal.x * normal.x + normal.y * normal.y + normal.z * normal.z;
    if (square <= normal_is_zero) return normal;
    const double length = std::sqrt(square);
    return {normal.x / length, normal.y / length, normal.z / length};
}

// Whether the normals of `source` are to be copied. Removes those of `target` where they cannot be
// kept in step.
bool keep_normals(giTriBlock& target, giTriBlock& source) {
    giNormArrcoFeature of_target;
    giNormArrcoFeature of_source;
    const bool have_both = target.get(of_target) != 0 && source.get(of_source) != 0;
    // Deliberate: an empty array of the target stays, although its nodes become more.
    if (have_both && of_source->size() > 0) return of_target->size() != 0;
    target.remove(of_target);
    return false;
}

}  // namespace

int nmkAppendTri(giTriBlock* block, const giPoint3& p1, const giPoint3& p2, const giPoint3& p3) {
    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    giNormArrcoFeature normals;
    block->add(nodes);
    block->add(triangles);
    const int first = nodes->size();
    if (block->get(normals) != 0) {
        const giVector3 normal = facet_normal(p1, p2, p3);
        for (int i = first; i < first + 3; ++i) (*normals)[i] = normal;
    }
    nodes->set(first, p1);
    nodes->set(first + 1, p2);
    nodes->set(first + 2, p3);
    triangles->add({first, first + 1, first + 2});
    return 0;
}

int nmkAppendTri(giTriBlock* block, double const* const corners) {
    // NaN is not below anything.
    const auto is_good = [](double value) { return std::fabs(value) < too_large; };
    if (!std::all_of(corners, corners + 9, is_good)) return 1;
    return nmkAppendTri(block, giPoint3(corners[0], corners[1], corners[2]),
                        giPoint3(corners[3], corners[4], corners[5]),
                        giPoint3(corners[6], corners[7], corners[8]));
}

int nmkAppendTri(giTriBlock* target, giTriBlock& source) {
    giNodeXYZ nodes;
    giNodeXYZ new_nodes;
    giTriArrcoFeature triangles;
    giTriArrcoFeature new_triangles;
    target->add(nodes);
    target->add(triangles);
    source.add(new_nodes);
    source.add(new_triangles);
    const int first_node = nodes->size();
    const int first_triangle = triangles->size();
    const int node_count = new_nodes->size();
    const int triangle_count = new_triangles->size();
    giNormArrcoFeature normals;
    giNormArrcoFeature new_normals;
    const bool is_copying = keep_normals(*target, source);
    target->get(normals);
    source.get(new_normals);
    for (int i = 0; i < node_count; ++i) {
        nodes->set(first_node + i, giPoint3((*new_nodes)[i]));
        if (is_copying) (*normals)[first_node + i] = giVector3(std::as_const(*new_normals)[i]);
    }
    for (int i = 0; i < triangle_count; ++i) {
        const giTriangle triangle = std::as_const(*new_triangles)[i];
        (*triangles)[first_triangle + i] = nmk_trifile::raised(triangle, first_node);
    }
    return 0;
}
