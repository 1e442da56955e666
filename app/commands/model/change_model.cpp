// change_model: what `nmk model convert` changes of a model: size, blocks and normals.

#include "commands/model/change_model.h"

#include <nmktoolbox/trifile/nmkAppendTri.h>
#include <nmktoolbox/trifile/nmkGiTriBlockColour.h>

#include <cmath>
#include <utility>
#include <vector>

namespace nmk_model {

namespace {

bool has_normals(const giTriBlock& block) {
    giNodeXYZ nodes;
    giNormArrcoFeature normals;
    return block.get(nodes) != 0 && block.get(normals) != 0 && normals->size() == nodes->size();
}

giVector3 unit_vector(const giVector3& vector) {
    const double length = std::sqrt(vector.dot(vector));
    return length > 0.0 ? giVector3(vector.x / length, vector.y / length, vector.z / length)
                        : giVector3();
}

/// For each node the sum of the normals of its triangles, each as long as the triangle is large.
std::vector<giVector3> normal_sums(const giBoxArrPoint3& nodes, const giTriArr& triangles) {
    std::vector<giVector3> sums(static_cast<std::size_t>(nodes.size()));
    for (const giTriangle& triangle : triangles) {
        const giPoint3& first = nodes[triangle[0]];
        const giVector3 normal = (nodes[triangle[1]] - first).cross(nodes[triangle[2]] - first);
        for (int k = 0; k < 3; ++k) {
            giVector3& sum = sums[static_cast<std::size_t>(triangle[k])];
            sum = sum + normal;
        }
    }
    return sums;
}

void add_normals(giTriBlock& block) {
    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    giNormArrcoFeature normals;
    block.add(nodes);
    block.add(triangles);
    block.add(normals);
    normals->clear();
    for (const giVector3& sum : normal_sums(*nodes, *triangles)) normals->add(unit_vector(sum));
}

}  // namespace

void scale_model(Model& model, double factor) {
    for (const auto& block : model.blocks) {
        giNodeXYZ nodes;
        if (factor == 1.0 || block->get(nodes) == 0) continue;
        for (int i = 0; i < nodes->size(); ++i) {
            const giPoint3 point = std::as_const(*nodes)[i];
            nodes->set(i, {point.x * factor, point.y * factor, point.z * factor});
        }
    }
}

void merge_blocks(Model& model) {
    if (model.blocks.size() < 2) return;
    giTriBlock& target = *model.blocks.front();
    for (std::size_t i = 1; i < model.blocks.size(); ++i) nmkAppendTri(&target, *model.blocks[i]);
    model.blocks.resize(1);
    nmkGiTriBlockColourcoFeature colour;
    target.remove(colour);
}

void add_missing_normals(Model& model) {
    for (const auto& block : model.blocks) {
        if (!has_normals(*block)) add_normals(*block);
    }
}

void remove_normals(Model& model) {
    for (const auto& block : model.blocks) {
        giNormArrcoFeature normals;
        block->remove(normals);
    }
}

}  // namespace nmk_model
