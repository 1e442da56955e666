#include <nmknmt/nmkNMTFileWrite.h>

#include <algorithm>
#include <climits>
#include <cstring>

#include "nmt_layout.h"

namespace {

struct Counts {
    std::int64_t nodes = 0;
    std::int64_t triangles = 0;
    bool has_normals = false;
};

Counts counts_of(const giTriBlock& block) {
    giNodeXYZ nodes;
    giNormArrcoFeature normals;
    giTriArrcoFeature triangles;
    Counts counts;
    if (block.get(nodes) != 0) counts.nodes = nodes->size();
    if (block.get(triangles) != 0) counts.triangles = triangles->size();
    counts.has_normals =
        counts.nodes > 0 && block.get(normals) != 0 && normals->size() == counts.nodes;
    return counts;
}

}  // namespace

int nmkNMTFileWrite::write_header(std::string_view title, bool is_mm, std::int32_t blocks,
                                  std::int32_t nodes, std::int32_t triangles) {
    title = title.substr(0, nmk_nmknmt::max_title);
    nmk_nmknmt::HeaderRecord header{};
    std::memcpy(header.letters, nmk_nmknmt::letters_of_nmt, sizeof header.letters);
    header.version = nmk_nmknmt::version_of_layout;
    header.is_mm = is_mm ? 1 : 0;
    header.blocks = static_cast<std::uint32_t>(blocks);
    header.nodes = static_cast<std::uint32_t>(nodes);
    header.triangles = static_cast<std::uint32_t>(triangles);
    header.title_size = static_cast<std::uint32_t>(title.size());
    return write(&header, sizeof header) | write(title.data(), title.size());
}

int nmkNMTFileWrite::write_block(std::int32_t nodes, std::int32_t triangles, bool has_normals,
                                 std::int32_t colour) {
    nmk_nmknmt::BlockRecord block{};
    block.nodes = static_cast<std::uint32_t>(nodes);
    block.triangles = static_cast<std::uint32_t>(triangles);
    if (has_normals) block.flags |= nmk_nmknmt::flag_normals;
    if (colour >= 0) block.flags |= nmk_nmknmt::flag_colour;
    block.colour = std::max(colour, 0);
    return write(&block, sizeof block);
}

int nmkNMTFileWrite::write_node(const giPoint3& point) {
    const double values[] = {point.x, point.y, point.z};
    return write(values, sizeof values);
}

int nmkNMTFileWrite::write_node(const giPoint3& point, const giVector3& normal) {
    const double values[] = {point.x, point.y, point.z, normal.x, normal.y, normal.z};
    return write(values, sizeof values);
}

int nmkNMTFileWrite::write_tri(const giTriangle& triangle) {
    const std::int32_t values[] = {triangle[0], triangle[1], triangle[2]};
    return write(values, sizeof values);
}

int nmkNMTFileWrite::write_file(std::string_view title, bool is_mm,
                                std::span<const giTriBlock* const> blocks) {
    Counts all;
    for (const giTriBlock* block : blocks) {
        const Counts counts = counts_of(*block);
        all.nodes += counts.nodes;
        all.triangles += counts.triangles;
    }
    if (blocks.size() > INT_MAX || all.nodes > INT_MAX || all.triangles > INT_MAX) return 1;
    int status = write_header(title, is_mm, static_cast<std::int32_t>(blocks.size()),
                              static_cast<std::int32_t>(all.nodes),
                              static_cast<std::int32_t>(all.triangles));
    for (const giTriBlock* block : blocks) {
        if (status == 0) status = write_one(*block);
    }
    return status;
}

int nmkNMTFileWrite::write_one(const giTriBlock& block) {
    const Counts counts = counts_of(block);
    giNodeXYZ nodes;
    giNormArrcoFeature normals;
    giTriArrcoFeature triangles;
    block.get(nodes);
    block.get(normals);
    block.get(triangles);
    int status = write_block(static_cast<std::int32_t>(counts.nodes),
                             static_cast<std::int32_t>(counts.triangles), counts.has_normals, -1);
    for (int i = 0; status == 0 && i < counts.nodes; ++i) {
        const giPoint3& point = std::as_const(*nodes)[i];
        status =
            counts.has_normals ? write_node(point, std::as_const(*normals)[i]) : write_node(point);
    }
    for (int i = 0; status == 0 && i < counts.triangles; ++i) {
        status = write_tri(std::as_const(*triangles)[i]);
    }
    return status;
}

int nmkNMTFileWrite::write(const void* bytes, std::size_t size) {
    return m_file.write(bytes, 1, size) == size ? 0 : 1;
}
