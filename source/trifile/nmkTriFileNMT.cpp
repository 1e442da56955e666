#include <geometry/giTriBlock.h>
#include <nmknmt/nmkNMTFileRead.h>
#include <nmktoolbox/curves/nmkUnitsUtils.h>
#include <nmktoolbox/trifile/nmkGiTriBlockColour.h>
#include <nmktoolbox/trifile/nmkTriFileNMT.h>

#include <algorithm>
#include <limits>

#include "raised_triangle.h"

namespace {

// The percent function is called at each multiple of this many nodes and triangles.
constexpr std::int64_t items_between_reports = 1000;

constexpr double max_percent = std::numeric_limits<int>::max();

constexpr std::int32_t max_nodes = std::numeric_limits<std::int32_t>::max();

// Deliberate: y and z are not compared with the negative mark.
bool is_marked(const giPoint3& point) {
    return point.x == gi_unset_low || point.x == gi_unset_high || point.y == gi_unset_high ||
           point.z == gi_unset_high;
}

}  // namespace

nmkTriFileNMT::nmkTriFileNMT(int with_normals) : m_with_normals(with_normals) {}

nmkTriFileNMT::~nmkTriFileNMT() = default;

int nmkTriFileNMT::read_next(double* const) { return 1; }

int nmkTriFileNMT::get_block(giTriBlock& block) {
    int status = next_block();
    if (status == 0) status = read_colour_into(block);
    if (status != 0) return status;
    giNodeXYZ nodes;
    giNormArrcoFeature normals;
    giTriArrcoFeature triangles;
    block.add(nodes);
    block.add(normals);
    block.add(triangles);
    const int node_base = nodes->size();
    if (node_base > max_nodes - m_nodes_in_block) return 3;
    status = read_nodes_into(block);
    return status == 1 ? read_triangles_into(block, node_base) : status;
}

int nmkTriFileNMT::percent_read() const {
    if (m_total_items == 0) return 0;
    const double part = static_cast<double>(m_items_read) / static_cast<double>(m_total_items);
    // A forged header may count less than there is.
    return static_cast<int>(std::min(part * 100.0, max_percent));
}

int nmkTriFileNMT::next_block() {
    if (m_blocks_read == m_block_count || m_file == nullptr) return 1;
    if (m_raw->read_block(&m_nodes_in_block, &m_triangles_in_block, &m_block_has_normals) != 0) {
        return 3;
    }
    ++m_blocks_read;
    m_nodes_read = 0;
    m_triangles_read = 0;
    return 0;
}

int nmkTriFileNMT::next_block(int& colour) {
    colour = -1;
    const int status = next_block();
    if (status != 0) return status;
    return m_raw->read_colour(colour) == 0 ? 0 : 3;
}

int nmkTriFileNMT::next_node(giPoint3& point, giVector3& normal, int* has_normal) {
    if (m_nodes_read == m_nodes_in_block || m_file == nullptr) return 1;
    *has_normal = m_with_normals != 0 && m_block_has_normals != 0 ? 1 : 0;
    const int failed =
        m_block_has_normals != 0 ? m_raw->read_node(point, normal) : m_raw->read_node(point);
    if (failed != 0 || is_marked(point)) return 3;
    if (m_block_has_normals != 0 && normal.x == gi_unset_low) return 3;
    if (m_scale != 1.0) point = {point.x * m_scale, point.y * m_scale, point.z * m_scale};
    m_box.add(point);
    ++m_nodes_read;
    return check_break();
}

int nmkTriFileNMT::next_triangle(giTriangle& triangle) {
    if (m_triangles_read == m_triangles_in_block || m_file == nullptr) return 1;
    return read_good_triangle(triangle);
}

int nmkTriFileNMT::read_header() {
    m_raw = std::make_unique<nmkNMTFileRead>(m_file);
    m_scale = 1.0;
    m_items_read = 0;
    m_block_count = 0;
    m_blocks_read = 0;
    m_nodes_in_block = 0;
    m_nodes_read = 0;
    m_triangles_in_block = 0;
    m_triangles_read = 0;
    char const* title = nullptr;
    int nodes = 0;
    int triangles = 0;
    if (m_raw->read_header(&title, &m_block_count, &nodes, &triangles) != 0) return 1;
    m_total_items = std::int64_t{nodes} + triangles;
    // Deliberate: a file in inches is not converted.
    if (m_raw->is_mm() != 0) m_scale = nmkUnitsUtils::get_scale_from(nmkUnitsTypeMillimetres);
    return 0;
}

int nmkTriFileNMT::read_colour_into(giTriBlock& block) {
    int colour = -1;
    if (m_raw->read_colour(colour) != 0) return 3;
    if (colour < 0) return 0;
    nmkGiTriBlockColourcoFeature feature;
    block.add(feature);
    feature->set_colour(colour);
    return 0;
}

// Returns the status that ended the nodes: 1 where all of them were read.
int nmkTriFileNMT::read_nodes_into(giTriBlock& block) {
    giNodeXYZ nodes;
    giNormArrcoFeature normals;
    block.get(nodes);
    block.get(normals);
    giPoint3 point;
    giVector3 normal;
    int has_normal = 0;
    for (;;) {
        const int status = next_node(point, normal, &has_normal);
        if (status != 0) return status;
        const int index = nodes->size();
        nodes->add(point);
        if (has_normal == 0 && normals.is_bound()) block.remove(normals);
        if (normals.is_bound()) (*normals)[index] = normal;
    }
}

int nmkTriFileNMT::read_triangles_into(giTriBlock& block, int node_base) {
    giTriArrcoFeature triangles;
    block.get(triangles);
    while (m_triangles_read != m_triangles_in_block) {
        giTriangle triangle;
        const int status = read_good_triangle(triangle);
        if (status != 0) return status;
        triangles->add(nmk_trifile::raised(triangle, node_base));
    }
    return 0;
}

// Reads and counts a triangle, whose nodes must be those of the block.
int nmkTriFileNMT::read_good_triangle(giTriangle& triangle) {
    if (m_raw->read_tri(triangle) != 0 || !nmk_trifile::is_inside(triangle, m_nodes_in_block)) {
        return 3;
    }
    count_triangles(1);
    ++m_triangles_read;
    return check_break();
}

int nmkTriFileNMT::check_break() {
    ++m_items_read;
    return m_items_read % items_between_reports == 0 && show_percent() != 0 ? 2 : 0;
}
