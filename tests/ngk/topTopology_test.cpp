// Parts of a boundary: what makes them valid, and what streams keep of them.
#include <gtest/gtest.h>
#include <ngk/ngkElementarySurfs.h>
#include <ngk/ngkLine.h>
#include <ngk/ngk_persistence.h>
#include <topology/top_persistence.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <set>

#include "archive_failure.h"
#include "stored_handles.h"
#include "topology_samples.h"

namespace {

using namespace topology_samples;
using stored_handles::Bytes;
using stored_handles::stored;

topTopologyPtr loaded(const Bytes& bytes, int buffer_size = 4096) {
    return stored_handles::loaded<topTopologyPtr>(bytes, buffer_size);
}

CArchiveException::Cause cause_of_loading(const Bytes& bytes) {
    return cause_of([&] { loaded(bytes); });
}

Bytes stored_part(const topTopologyPtr& part) { return stored(part); }

const double not_a_number = std::nan("");
const double infinite = std::numeric_limits<double>::infinity();

struct NamedPart {
    const char* name;
    topTopologyPtr part;

    friend std::ostream& operator<<(std::ostream& stream, const NamedPart& one) {
        return stream << one.name;
    }
};

std::vector<NamedPart> parts() {
    const ngkSurfPtr sphere(new ngkSphereSurf(giWorkplane3(), 2.0));
    return {{"vertex", vertex(1, 2, 3)},
            {"edge", line(vertex(1, 2, 3), vertex(4, 5, 6))},
            {"closed_edge", circle(1.0)},
            {"loop", loop({{circle(1.0), true}})},
            {"face_with_a_hole", ring()},
            {"face_without_loops", topFacePtr(new topFace(sphere, true, {}))},
            {"open_shell", tetrahedron(3)},
            {"closed_shell", tetrahedron()}};
}

class topTopology_stored : public testing::TestWithParam<NamedPart> {};

/// All edges and vertices below a shell, by identity.
void collect(const topShell& shell, std::set<const topTopology*>& found) {
    for (const topFacePtr& face : shell.faces()) {
        for (const topLoopPtr& around : face->loops()) {
            for (const topEdgeUse& use : around->uses()) {
                found.insert({use.edge.get(), use.start().get(), use.end().get()});
            }
        }
    }
}

/// A class of the host's own.
class HostVertex : public topVertex {
  public:
    using topVertex::topVertex;
};

}  // namespace

TEST(topVertex, is_invalid_where_its_point_or_tolerance_is) {
    EXPECT_TRUE(topVertex(giPoint3(1, 2, 3), 0.0).is_valid());
    EXPECT_FALSE(topVertex(giPoint3(), 0.0).is_valid());
    EXPECT_FALSE(topVertex(giPoint3(1, not_a_number, 3), 0.0).is_valid());
    for (const double tolerance : {-1.0, not_a_number, infinite, -infinite})
        EXPECT_FALSE(topVertex(giPoint3(1, 2, 3), tolerance).is_valid()) << tolerance;
}

TEST(topEdge, begins_and_ends_within_the_tolerance_of_its_vertices) {
    const topVertexPtr a = vertex(0, 0, 0);
    const topVertexPtr b = vertex(1, 0, 0);
    const auto between = [&](double low, double high) {
        const ngkCurvePtr3 curve(new ngkLine3(giPoint3(low, 0, 0), giPoint3(high, 0, 0)));
        return topEdge(curve, a, b).is_valid();
    };
    EXPECT_TRUE(between(0.0, 1.0));
    EXPECT_TRUE(between(0.9e-6, 1.0 - 0.9e-6));
    EXPECT_FALSE(between(1.1e-6, 1.0));
    EXPECT_FALSE(between(0.0, 1.0 + 1.1e-6));
    EXPECT_FALSE(between(1.0, 0.0));
}

TEST(topEdge, is_invalid_without_its_parts) {
    const topVertexPtr a = vertex(0, 0, 0);
    const topVertexPtr b = vertex(1, 0, 0);
    const ngkCurvePtr3 curve(new ngkLine3(giPoint3(0, 0, 0), giPoint3(1, 0, 0)));
    const ngkCurvePtr3 ray(new ngkLine3(giPoint3(0, 0, 0), giVector3(1, 0, 0), ngkLineKind::half));
    const topVertexPtr unset(new topVertex(giPoint3(), 1.0));
    EXPECT_FALSE(topEdge(ngkCurvePtr3(), a, b).is_valid());
    EXPECT_FALSE(topEdge(curve, topVertexPtr(), b).is_valid());
    EXPECT_FALSE(topEdge(curve, a, topVertexPtr()).is_valid());
    EXPECT_FALSE(topEdge(curve, unset, b).is_valid());
    EXPECT_FALSE(topEdge(ray, a, b).is_valid());
}

TEST(topLoop, joins_edges_in_the_same_vertices) {
    const topVertexPtr a = vertex(0, 0, 0);
    const topVertexPtr b = vertex(1, 0, 0);
    const topVertexPtr equal_to_b = vertex(1, 0, 0);
    const topVertexPtr c = vertex(0, 1, 0);
    EXPECT_TRUE(loop({{line(a, b), false}, {line(b, c), false}, {line(a, c), true}})->is_valid());
    EXPECT_FALSE(
        loop({{line(a, b), false}, {line(equal_to_b, c), false}, {line(a, c), true}})->is_valid());
    EXPECT_FALSE(loop({{line(a, b), false}, {line(b, c), false}})->is_valid());
    EXPECT_FALSE(loop({})->is_valid());
    EXPECT_FALSE(loop({{topEdgePtr(), false}})->is_valid());
}

TEST(topFace, is_invalid_without_a_surface_or_with_an_invalid_loop) {
    const ngkSurfPtr plane(new ngkPlaneSurf(giWorkplane3()));
    EXPECT_TRUE(topFace(plane, false, {}).is_valid());
    EXPECT_FALSE(topFace(ngkSurfPtr(), false, {}).is_valid());
    EXPECT_FALSE(topFace(plane, false, {topLoopPtr()}).is_valid());
    EXPECT_FALSE(topFace(plane, false, {loop({})}).is_valid());
}

TEST(topShell, is_closed_where_each_edge_is_used_in_both_directions) {
    EXPECT_TRUE(tetrahedron()->is_valid());
    EXPECT_TRUE(tetrahedron()->is_closed());
    EXPECT_TRUE(tetrahedron(3)->is_valid());
    EXPECT_FALSE(tetrahedron(3)->is_closed());
}

TEST(topShell, is_invalid_where_an_edge_is_used_twice_in_one_direction) {
    const topFacePtr face = ring();
    EXPECT_TRUE(topShell({face}).is_valid());
    EXPECT_FALSE(topShell({face, face}).is_valid());
    EXPECT_FALSE(topShell({}).is_valid());
    EXPECT_FALSE(topShell({topFacePtr()}).is_valid());
}

TEST_P(topTopology_stored, is_the_same_when_it_is_loaded) {
    const Bytes bytes = stored_part(GetParam().part);
    const topTopologyPtr again = loaded(bytes);
    ASSERT_TRUE(again && again->is_valid());
    const topTopology& one = *GetParam().part;
    const topTopology& other = *again;
    EXPECT_TRUE(typeid(one) == typeid(other));
    EXPECT_EQ(stored_part(again), bytes);
}

TEST_P(topTopology_stored, is_refused_where_the_stream_is_cut) {
    const Bytes whole = stored_part(GetParam().part);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        ASSERT_EQ(cause_of_loading(prefix), CArchiveException::endOfFile) << size;
    }
}

TEST_P(topTopology_stored, is_refused_or_valid_where_a_byte_is_changed) {
    const Bytes whole = stored_part(GetParam().part);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const unsigned change : {0x01U, 0x80U, 0xFFU}) {
            Bytes bytes = whole;
            bytes[at] = static_cast<unsigned char>(bytes[at] ^ change);
            topTopologyPtr again;
            if (cause_of([&] { again = loaded(bytes); }) != CArchiveException::none) continue;
            ASSERT_TRUE(!again || again->is_valid());
            EXPECT_EQ(stored_part(loaded(stored_part(again))), stored_part(again));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(kinds, topTopology_stored, testing::ValuesIn(parts()),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(top_persistence, keeps_what_faces_share) {
    const topTopologyPtr again = loaded(stored_part(tetrahedron()));
    const auto* const shell = dynamic_cast<const topShell*>(again.get());
    ASSERT_NE(shell, nullptr);
    EXPECT_TRUE(shell->is_closed());
    std::set<const topTopology*> found;
    collect(*shell, found);
    EXPECT_EQ(found.size(), 6U + 4U);
}

TEST(top_persistence, stores_an_empty_handle_in_one_byte) {
    EXPECT_EQ(stored_part(topTopologyPtr()), Bytes{0});
    topTopologyPtr part = vertex(1, 2, 3);
    load_bytes(Bytes{0}, [&](CArchive& archive) { archive >> part; });
    EXPECT_FALSE(part);
}

TEST(top_persistence, does_not_store_what_is_invalid_or_of_another_class) {
    for (const topTopologyPtr& part :
         {topTopologyPtr(loop({})), topTopologyPtr(new topVertex(giPoint3(), 1.0)),
          topTopologyPtr(new HostVertex(giPoint3(1, 2, 3), 1.0))})
        EXPECT_EQ(cause_of([&] { stored_part(part); }), CArchiveException::badSchema);
}

TEST(top_persistence, keeps_the_handle_where_loading_fails) {
    topTopologyPtr part = vertex(1, 2, 3);
    const topTopologyPtr before = part;
    Bytes cut = stored_part(ring());
    cut.pop_back();
    EXPECT_EQ(cause_of([&] { load_bytes(cut, [&](CArchive& archive) { archive >> part; }); }),
              CArchiveException::endOfFile);
    EXPECT_EQ(part, before);
}

TEST(top_persistence, refuses_another_class_or_version) {
    const ngkCurvePtr3 curve(new ngkLine3(giPoint3(1, 2, 3), giPoint3(4, 5, 6)));
    EXPECT_EQ(cause_of_loading(stored(curve)), CArchiveException::badClass);
    Bytes bytes = stored_part(vertex(1, 2, 3));
    bytes[3] = 2;
    EXPECT_EQ(cause_of_loading(bytes), CArchiveException::badSchema);
    bytes[0] = 2;
    EXPECT_EQ(cause_of_loading(bytes), CArchiveException::badIndex);
}

TEST(top_persistence, refuses_numbers_of_parts_that_are_not_there) {
    Bytes bytes = stored_part(vertex(1, 2, 3));
    // The last two bytes are the number of the vertex.
    bytes[bytes.size() - 2] = 1;
    EXPECT_EQ(cause_of_loading(bytes), CArchiveException::badIndex);
    Bytes edge = stored_part(circle(1.0));
    edge[edge.size() - 4] = 1;  // the vertex at the end of the only edge
    EXPECT_EQ(cause_of_loading(edge), CArchiveException::badIndex);
}

TEST(top_persistence, does_not_believe_counts) {
    const topTopologyPtr whole = vertex(1, 2, 3);
    Bytes bytes = stored_part(whole);
    // Behind the record of "topVertex": 1 + 2 + 2 + 2 + 9 bytes, the count of vertices.
    bytes[16] = bytes[17] = 0xFF;
    const Bytes count = {0xFF, 0xFF, 0xFF, 0xFF};
    bytes.insert(bytes.begin() + 18, count.begin(), count.end());
    EXPECT_EQ(cause_of_loading(bytes), CArchiveException::endOfFile);
}
