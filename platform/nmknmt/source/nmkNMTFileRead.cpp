#include <nmknmt/nmkNMTFileRead.h>

#include <algorithm>
#include <climits>
#include <cstring>

#include "nmt_layout.h"

namespace {

bool are_counts(std::initializer_list<std::uint32_t> counts) {
    return std::all_of(counts.begin(), counts.end(),
                       [](std::uint32_t count) { return count <= INT_MAX; });
}

bool is_good(const nmk_nmknmt::HeaderRecord& header) {
    return std::memcmp(header.letters, nmk_nmknmt::letters_of_nmt, sizeof header.letters) == 0 &&
           header.version == nmk_nmknmt::version_of_layout && header.is_mm <= 1 &&
           are_counts({header.blocks, header.nodes, header.triangles}) &&
           header.title_size <= nmk_nmknmt::max_title;
}

}  // namespace

bool nmkNMTFileRead::read(void* bytes, std::size_t size) {
    return m_file != nullptr && m_file->read(bytes, 1, size) == size;
}

int nmkNMTFileRead::read_header(char const** title, int* blocks, int* nodes, int* triangles) {
    nmk_nmknmt::HeaderRecord header{};
    if (m_file == nullptr || m_file->seek(0, apNMKSeekBegin) != 0 ||
        !read(&header, sizeof header) || !is_good(header)) {
        return 1;
    }
    m_title.resize(header.title_size);
    if (!read(m_title.data(), m_title.size())) return 1;
    m_is_mm = static_cast<int>(header.is_mm);
    *title = m_title.c_str();
    *blocks = static_cast<int>(header.blocks);
    *nodes = static_cast<int>(header.nodes);
    *triangles = static_cast<int>(header.triangles);
    return 0;
}

int nmkNMTFileRead::read_block(int* nodes, int* triangles, int* has_normals) {
    nmk_nmknmt::BlockRecord block{};
    constexpr std::uint32_t known = nmk_nmknmt::flag_normals | nmk_nmknmt::flag_colour;
    if (!read(&block, sizeof block) || !are_counts({block.nodes, block.triangles}) ||
        (block.flags & ~known) != 0) {
        return 1;
    }
    *nodes = static_cast<int>(block.nodes);
    *triangles = static_cast<int>(block.triangles);
    *has_normals = (block.flags & nmk_nmknmt::flag_normals) != 0 ? 1 : 0;
    m_has_colour = (block.flags & nmk_nmknmt::flag_colour) != 0;
    m_colour = block.colour;
    return 0;
}

int nmkNMTFileRead::read_colour(int& colour) const noexcept {
    if (m_has_colour) colour = m_colour;
    return 0;
}

int nmkNMTFileRead::read_node(giPoint3& point) {
    double values[3];
    if (!read(values, sizeof values)) return 1;
    point = {values[0], values[1], values[2]};
    return 0;
}

int nmkNMTFileRead::read_node(giPoint3& point, giVector3& normal) {
    double values[6];
    if (!read(values, sizeof values)) return 1;
    point = {values[0], values[1], values[2]};
    normal = {values[3], values[4], values[5]};
    return 0;
}

int nmkNMTFileRead::read_tri(giTriangle& triangle) {
    std::int32_t values[3];
    if (!read(values, sizeof values)) return 1;
    triangle = {values[0], values[1], values[2]};
    return 0;
}
