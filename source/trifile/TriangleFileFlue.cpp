#include <geometry/giTriBlock.h>
#include <nls/scan_number.h>
#include <nmktoolbox/files/nmktrim.h>
#include <nmktoolbox/trifile/TriangleFileFlue.h>
#include <nmktoolbox/trifile/nmkGiTriData.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "raised_triangle.h"

namespace {

constexpr int index_entries_per_line = 5;
constexpr int lines_behind_the_name = 2;
constexpr int lines_behind_the_counts = 8;

// The percent function is called at each multiple of this many nodes and triangles.
constexpr std::int64_t items_between_reports = 1000;

// The least bytes of a node and of a triangle in a file, for what is reserved.
constexpr std::int64_t min_node_bytes = 7;
constexpr std::int64_t min_triangle_bytes = 6;

std::size_t room(std::int64_t count, std::int64_t file_length, std::int64_t min_bytes) {
    return static_cast<std::size_t>(3 * std::min(count, file_length / min_bytes));
}

giPoint3 point_at(const std::vector<double>& nodes, int index) {
    const double* const node = nodes.data() + 3 * static_cast<std::size_t>(index);
    return {node[0], node[1], node[2]};
}

}  // namespace

TriangleFileFlue::TriangleFileFlue(int with_normals) : m_with_normals(with_normals), m_line() {}

TriangleFileFlue::~TriangleFileFlue() = default;

int TriangleFileFlue::read_next(double* const corners) {
    if (m_next_triangle >= m_triangles_in_block) {
        if (m_blocks_read >= m_block_count) return 1;
        const int status = read_block();
        if (status != 0) return status;
    }
    const int* const numbers = m_triangles.data() + 3 * static_cast<std::size_t>(m_next_triangle);
    for (int k = 0; k < 3; ++k) {
        const giPoint3 node = point_at(m_nodes, numbers[k] - 1);
        corners[3 * k] = node.x;
        corners[3 * k + 1] = node.y;
        corners[3 * k + 2] = node.z;
    }
    ++m_next_triangle;
    return 0;
}

int TriangleFileFlue::get_block(giTriBlock& block) {
    if (m_blocks_read >= m_block_count) return 1;
    const int status = read_block();
    if (status != 0) return status;
    giNodeXYZ nodes;
    giNormArrcoFeature normals;
    giTriArrcoFeature triangles;
    nmkGiTriDatacoFeature data;
    block.add(nodes);
    block.add(normals);
    block.add(triangles);
    block.add(data);
    data->set_name(m_block_name);
    const int base = nodes->size();
    for (int i = 0; i < m_nodes_in_block; ++i) nodes->set(base + i, point_at(m_nodes, i));
    if (m_normals.empty()) block.remove(normals);
    for (int i = 0; normals.is_bound() && i < m_nodes_in_block; ++i) {
        const giPoint3 normal = point_at(m_normals, i);
        (*normals)[base + i] = {normal.x, normal.y, normal.z};
    }
    for (std::size_t i = 0; i < m_triangles.size(); i += 3) {
        const giTriangle triangle(m_triangles[i], m_triangles[i + 1], m_triangles[i + 2]);
        triangles->add(nmk_trifile::raised(triangle, base - 1));
    }
    return 0;
}

int TriangleFileFlue::get_block(double const** nodes, double const** normals, int* node_count,
                                int const** triangles, int* triangle_count) {
    *normals = nullptr;
    const int status = get_block(nodes, node_count, triangles, triangle_count);
    if (status == 0 && !m_normals.empty()) *normals = m_normals.data();
    return status;
}

int TriangleFileFlue::get_block(double const** nodes, int* node_count, int const** triangles,
                                int* triangle_count) {
    *nodes = nullptr;
    *triangles = nullptr;
    if (m_blocks_read >= m_block_count) return 1;
    const int status = read_block();
    if (status != 0) return status;
    *nodes = m_nodes.data();
    *triangles = m_triangles.data();
    *node_count = m_nodes_in_block;
    *triangle_count = m_triangles_in_block;
    return 0;
}

// Deliberate: a complete block counts in both parts.
int TriangleFileFlue::percent_read() const {
    const std::int64_t blocks = m_block_count;
    std::int64_t percent = blocks != 0 ? std::int64_t{m_blocks_read} * 100 / blocks : 0;
    if (m_items_read != 0 && m_items_in_block != 0 && blocks != 0) {
        percent += m_items_read * 100 / m_items_in_block / blocks;
    }
    return static_cast<int>(percent);
}

int TriangleFileFlue::read_header() {
    m_block_count = 0;
    m_triangles_in_block = 0;
    m_next_triangle = 0;
    m_items_read = 0;
    m_items_in_block = 0;
    m_blocks_read = 0;
    m_failure = 0;
    do {
        if (!read_line()) return 1;
        // Deliberate: a mark in the first column does not count.
    } while (m_line[0] == '\0' || m_line[1] != '*');
    if (!read_line() || !scan(&m_block_count, 1)) return 1;
    // Deliberate: the quotient is cut towards 0, so that a count of 0 skips a line as well.
    const std::int64_t index_lines = (std::int64_t{m_block_count} - 1) / index_entries_per_line + 1;
    for (std::int64_t i = 0; i < index_lines; ++i) {
        if (!read_line()) return 1;
    }
    return 0;
}

void TriangleFileFlue::read_tidy() {
    m_nodes = {};
    m_normals = {};
    m_triangles = {};
    m_triangles_in_block = 0;
    m_next_triangle = 0;
}

int TriangleFileFlue::read_block() {
    if (m_failure != 0) return m_failure;
    read_tidy();
    m_items_read = 0;
    m_items_in_block = 0;
    try {
        m_failure = read_block_parts();
    } catch (const std::bad_alloc&) {
        m_failure = 3;
    }
    // Half a block is not delivered by read_next either.
    if (m_failure != 0) m_triangles_in_block = 0;
    return m_failure;
}

int TriangleFileFlue::read_block_parts() {
    int status = read_block_head();
    if (status != 0) return status;
    reserve();
    status = read_nodes();
    if (status != 0) return status;
    if (show_percent() != 0) return 2;
    status = read_triangles();
    if (status != 0) return status;
    count_triangles(m_triangles_in_block);
    ++m_blocks_read;
    return 0;
}

// What precedes the nodes.
int TriangleFileFlue::read_block_head() {
    if (!read_line()) return 1;
    m_block_name = m_line;
    nmktrim(m_block_name);
    if (!skip_lines(lines_behind_the_name) || !read_line()) return 1;
    int numbers[4] = {};
    if (!scan(numbers, 4) || numbers[2] <= 0 || numbers[3] <= 0) return 3;
    m_nodes_in_block = numbers[2];
    m_triangles_in_block = numbers[3];
    if (numbers[0] != 1) m_with_normals = 0;
    m_items_in_block = std::int64_t{m_nodes_in_block} + m_triangles_in_block;
    return skip_lines(lines_behind_the_counts) ? 0 : 3;
}

// Room for the block, as far as the file can hold it.
void TriangleFileFlue::reserve() {
    const std::int64_t length = m_file->length();
    m_nodes.reserve(room(m_nodes_in_block, length, min_node_bytes));
    if (m_with_normals != 0) m_normals.reserve(room(m_nodes_in_block, length, min_node_bytes));
    m_triangles.reserve(room(m_triangles_in_block, length, min_triangle_bytes));
}

int TriangleFileFlue::read_nodes() {
    bool has_normals = m_with_normals != 0;
    for (int i = 0; i < m_nodes_in_block; ++i) {
        const int status = read_node(has_normals);
        if (status != 0) return status;
    }
    return 0;
}

// The two lines of a node. `has_normals` is cleared by a normal that is not a unit vector.
int TriangleFileFlue::read_node(bool& has_normals) {
    double node[6] = {};
    // Deliberate: the end of the file is the end of the data here, and bad data on the second line.
    if (!read_line()) return 1;
    if (!scan(node, has_normals ? 4 : 3)) return 3;
    m_nodes.insert(m_nodes.end(), node, node + 3);
    m_box.add({node[0], node[1], node[2]});
    if (!read_line()) return 3;
    if (has_normals) {
        if (!scan(node + 4, 2)) return 3;
        m_normals.insert(m_normals.end(), node + 3, node + 6);
        if (is_unit(node + 3) == 0) {
            m_normals = {};
            m_with_normals = 0;
            has_normals = false;
        }
    }
    return count_item();
}

int TriangleFileFlue::read_triangles() {
    for (int i = 0; i < m_triangles_in_block; ++i) {
        const int status = read_triangle();
        if (status != 0) return status;
    }
    return 0;
}

int TriangleFileFlue::read_triangle() {
    int numbers[3] = {};
    // Deliberate: a line that is not a triangle ends the data, where one that is not a node is bad.
    if (!read_line() || !scan(numbers, 3)) return 1;
    const auto is_node = [this](int number) { return number >= 1 && number <= m_nodes_in_block; };
    if (!std::all_of(numbers, numbers + 3, is_node)) return 3;
    m_triangles.insert(m_triangles.end(), numbers, numbers + 3);
    return count_item();
}

// False at the end of the file, and where it is closed.
bool TriangleFileFlue::read_line() {
    return m_file != nullptr && m_file->gets(m_line, sizeof m_line) != nullptr;
}

bool TriangleFileFlue::skip_lines(int count) {
    for (int i = 0; i < count; ++i) {
        if (!read_line()) return false;
    }
    return true;
}

bool TriangleFileFlue::scan(double* values, int count) const {
    const char* at = m_line;
    const char* const end = at + std::strlen(m_line);
    return std::all_of(values, values + count,
                       [&](double& value) { return nmk_nls::scan_number(at, end, value); });
}

bool TriangleFileFlue::scan(int* values, int count) const {
    const char* at = m_line;
    const char* const end = at + std::strlen(m_line);
    return std::all_of(values, values + count,
                       [&](int& value) { return nmk_nls::scan_number(at, end, value); });
}

int TriangleFileFlue::count_item() {
    ++m_items_read;
    return m_items_read % items_between_reports == 0 && show_percent() != 0 ? 2 : 0;
}
