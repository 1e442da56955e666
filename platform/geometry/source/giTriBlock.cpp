#include <geometry/giTriBlock.h>

#include <algorithm>
#include <atomic>
#include <bit>

namespace {

// The exponents of the number of links in a page: the usual one, and the limits.
constexpr int usual_shift = 8;
constexpr int min_shift = 4;
constexpr int max_shift = 16;

constinit std::atomic<int> link_page_shift{usual_shift};

const coFeatureID id_of_nodes;
const coFeatureID id_of_normals;
const coFeatureID id_of_triangles;
const coFeatureID id_of_links;

template <class Feature>
void repaginate(giTriBlock& block) {
    Feature feature;
    if (block.get(feature) != 0) feature->repaginate();
}

}  // namespace

giLinkArr::giLinkArr() : coPageArr<giLink>(link_page_shift, 5, 10) {}

void giLinkArr::set_page_size(int elements) {
    const auto wanted = static_cast<unsigned int>(std::max(elements, 1));
    link_page_shift =
        std::clamp(static_cast<int>(std::bit_width(wanted - 1)), min_shift, max_shift);
}

basecoFeature* giNodeXYZ::create() const { return new giNodeXYZ; }
const coFeatureID& giNodeXYZ::get_id() const { return id_of_nodes; }

basecoFeature* giNormArrcoFeature::create() const { return new giNormArrcoFeature; }
const coFeatureID& giNormArrcoFeature::get_id() const { return id_of_normals; }

basecoFeature* giTriArrcoFeature::create() const { return new giTriArrcoFeature; }
const coFeatureID& giTriArrcoFeature::get_id() const { return id_of_triangles; }

basecoFeature* giLinkArrcoFeature::create() const { return new giLinkArrcoFeature; }
const coFeatureID& giLinkArrcoFeature::get_id() const { return id_of_links; }

void gi_repage_tri_block(giTriBlock& block) {
    repaginate<giNodeXYZ>(block);
    repaginate<giNormArrcoFeature>(block);
    repaginate<giTriArrcoFeature>(block);
}
