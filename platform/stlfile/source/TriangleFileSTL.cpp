#include <geometry/giTriBlock.h>
#include <stlfile/TriangleFileSTL.h>

#include <array>
#include <climits>
#include <cstddef>

#include "BinaryFacets.h"
#include "TextFacets.h"

using nmk_stlfile::binary_facet_size;
using nmk_stlfile::binary_header_size;

namespace {

// The percent function is called before each triangle whose number is a multiple of this.
constexpr std::uint32_t triangles_between_reports = 1000;

// Nodes of a block; each corner is appended, or is the one that was there.
class Nodes {
  public:
    Nodes(giBoxArrPoint3& nodes, slfINodeUnduplicator* unduplicator)
        : m_nodes(nodes), m_unduplicator(unduplicator) {
        if (m_unduplicator != nullptr) m_unduplicator->clear();
    }

    bool has_room() const noexcept { return m_nodes.size() <= INT_MAX - 3; }

    giTriangle triangle_of(double const* const corners) {
        const std::int32_t first = index_of(corners);
        const std::int32_t second = index_of(corners + 3);
        const std::int32_t third = index_of(corners + 6);
        return {first, second, third};
    }

  private:
    std::int32_t index_of(double const* const corner) {
        const giPoint3 point(corner[0], corner[1], corner[2]);
        const int next = m_nodes.size();
        const long long index =
            m_unduplicator != nullptr ? m_unduplicator->node_index(point, next) : next;
        if (index == next) m_nodes.add(point);
        return static_cast<std::int32_t>(index);
    }

    giBoxArrPoint3& m_nodes;
    slfINodeUnduplicator* m_unduplicator;
};

}  // namespace

// Triangles that are read before their corners are looked up: the look-ups, most of which wait for
// memory, then overlap.
struct TriangleFileSTL::Batch {
    std::array<std::array<double, 9>, 64> corners;
    std::size_t count = 0;
};

TriangleFileSTL::TriangleFileSTL(slfINodeUnduplicator* unduplicator)
    : m_unduplicator(unduplicator) {}

TriangleFileSTL::~TriangleFileSTL() = default;

std::int64_t TriangleFileSTL::binary_length(std::uint32_t triangles) {
    return binary_header_size + binary_facet_size * triangles;
}

int TriangleFileSTL::read_next(double* const corners) { return read_kept(corners); }

int TriangleFileSTL::get_block(giTriBlock& block) {
    Batch batch;
    int status = read_batch(batch);
    if (batch.count == 0) return status;
    giNodeXYZ node_feature;
    giTriArrcoFeature triangles;
    block.add(node_feature);
    block.add(triangles);
    Nodes nodes(*node_feature, m_unduplicator);
    while (batch.count > 0) {
        for (std::size_t i = 0; i < batch.count; ++i) {
            if (!nodes.has_room()) return 3;
            triangles->add(nodes.triangle_of(batch.corners[i].data()));
        }
        batch.count = 0;
        if (status == 0) status = read_batch(batch);
    }
    return status == 1 ? 0 : status;
}

// Reads triangles until the batch is full, or a status other than 0 ends it, which is returned.
int TriangleFileSTL::read_batch(Batch& batch) {
    for (batch.count = 0; batch.count < batch.corners.size(); ++batch.count) {
        const int status = read_kept(batch.corners[batch.count].data());
        if (status != 0) return status;
    }
    return 0;
}

int TriangleFileSTL::percent_read() const {
    if (m_text != nullptr) {
        const std::int64_t length = m_file != nullptr ? m_file->length() : 0;
        return length > 0 ? static_cast<int>(m_text->position() * 100 / length) : 0;
    }
    if (m_triangles_in_file == 0) return 0;
    return static_cast<int>(std::uint64_t{m_triangles_read} * 100 / m_triangles_in_file);
}

int TriangleFileSTL::b_read_char(char* value) {
    return m_file != nullptr && m_file->read(value, 1, 1) == 1 ? 0 : 3;
}

int TriangleFileSTL::b_read_ulong(unsigned long* value) {
    std::uint32_t read = 0;
    if (m_file == nullptr || m_file->read(&read, sizeof read, 1) != sizeof read) return 3;
    *value = read;
    return 0;
}

int TriangleFileSTL::b_read_float(float* value) {
    float read = 0;
    if (m_file == nullptr || m_file->read(&read, sizeof read, 1) != sizeof read) return 3;
    *value = read;
    return 0;
}

int TriangleFileSTL::read_header() {
    m_triangles_in_file = 0;
    m_triangles_read = 0;
    m_text.reset();
    m_binary.reset();
    const std::int64_t length = m_file->length();
    std::uint32_t count = 0;
    const bool has_count = binary_triangles(count) == 0;
    const bool is_whole = has_count && is_binary(length, count);
    if (!is_whole && nmk_stlfile::TextFacets::is_text(*m_file)) {
        m_text = std::make_unique<nmk_stlfile::TextFacets>(*m_file);
        return 0;
    }
    if (!has_count || m_file->seek(binary_header_size, apNMKSeekBegin) != 0) return 3;
    m_triangles_in_file = count;
    m_binary = std::make_unique<nmk_stlfile::BinaryFacets>(*m_file, count);
    return 0;
}

// The number of triangles in the header of a binary file; 3 where the header is cut.
int TriangleFileSTL::binary_triangles(std::uint32_t& count) {
    unsigned long read = 0;
    if (m_file->seek(binary_header_size - 4, apNMKSeekBegin) != 0 || b_read_ulong(&read) != 0) {
        return 3;
    }
    count = static_cast<std::uint32_t>(read);
    return 0;
}

void TriangleFileSTL::read_tidy() {
    m_text.reset();
    m_binary.reset();
    m_triangles_in_file = 0;
    m_triangles_read = 0;
}

// The next triangle that is to be delivered.
int TriangleFileSTL::read_kept(double* const corners) {
    int flag = 0;
    giColour colour;
    for (;;) {
        const int status = read_next(corners, flag, colour);
        const int nan = status == 0 ? check_nan(corners) : 0;
        if (nan == 0) return status;
        if (nan == 3) return 3;
        ++m_ignored_count;
    }
}

int TriangleFileSTL::read_next(double* const corners, int& flag, giColour&) {
    flag = 0;
    const bool is_end = m_text == nullptr && m_triangles_read >= m_triangles_in_file;
    if (is_end) return 1;
    if (m_triangles_read % triangles_between_reports == 0 && show_percent() != 0) return 2;
    const int status = m_text != nullptr ? m_text->read(corners) : m_binary->read(corners);
    if (status != 0) return status;
    ++m_triangles_read;
    if (check_nan(corners) == 0) merge_corners(corners);
    count_triangles(1);
    return 0;
}
