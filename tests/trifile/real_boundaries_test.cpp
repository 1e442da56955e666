// The free edges of real models: read with shared nodes, and each corner by itself.
#include <gtest/gtest.h>
#include <nmktoolbox/trifile/nmkTriBoundary.h>
#include <nmktoolbox/trifile/nmkTriFileReader.h>

#include <ostream>
#include <string>

#include "model_samples.h"
#include "real_inputs.h"

namespace {

class Silent : public nmkProgressBreak {};

int count_edge(const giPoint3&, const giPoint3&, void* data) {
    ++*static_cast<int*>(data);
    return 0;
}

int free_edges(giTriBlock& block) {
    nmkTriBoundary boundary(&block);
    int count = 0;
    boundary.visit(count_edge, &count);
    return count;
}

struct RealCase {
    const char* name;
    const char* file;
    int free_edges;
};

std::ostream& operator<<(std::ostream& out, const RealCase& each) { return out << each.name; }

class nmkTriBoundary_real : public testing::TestWithParam<RealCase> {};

}  // namespace

TEST_P(nmkTriBoundary_real, has_the_free_edges_that_are_known_of_it) {
    const std::string name = std::string("stl/") + GetParam().file;
    if (const auto missing = real_inputs::missing(name)) GTEST_SKIP() << *missing;
    Silent silent;
    nmkTriFileReader reader(real_inputs::path(name).c_str(), silent, 0, 1, 1.0);
    giTriBlock shared;
    ASSERT_EQ(reader.get_block(&shared), 1);
    EXPECT_EQ(free_edges(shared), GetParam().free_edges);
    giTriBlock unshared;
    model_samples::fill_unshared(unshared, model_samples::corners_of(shared));
    nmkTriBoundary boundary(&unshared);
    boundary.set_tolerance(0.0);
    int count = 0;
    boundary.visit(count_edge, &count);
    EXPECT_EQ(count, GetParam().free_edges);
}

// The Spider has 72 edges of one triangle, and 20 more are left over where many meet.
INSTANTIATE_TEST_SUITE_P(
    models, nmkTriBoundary_real,
    testing::Values(RealCase{"closed_shell", "numpystl_rear_case_solid.stl", 0},
                    RealCase{"degenerate_triangles", "assimp_Spider_binary.stl", 92},
                    RealCase{"open_sheets", "assimp_Wuson_colour.stl", 412},
                    RealCase{"open_shell", "trimesh_idler_riser_solid_open.stl", 44},
                    RealCase{"cubes_that_share_an_edge", "trimesh_shared_edge_nonmanifold.stl", 0},
                    RealCase{"small_shell", "openstl_KEY_solid.stl", 0}),
    testing::PrintToStringParamName());
