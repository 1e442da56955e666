// nmt_layout.h: the records of an NMT file as they are in memory and in the file.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace nmk_nmknmt {

static_assert(std::endian::native == std::endian::little, "records are read as they are in files");

constexpr char letters_of_nmt[4] = {'N', 'M', 'T', 'F'};
constexpr std::uint32_t version_of_layout = 1;
constexpr std::size_t max_title = 4096;

constexpr std::uint32_t flag_normals = 1;
constexpr std::uint32_t flag_colour = 2;

struct HeaderRecord {
    char letters[4];
    std::uint32_t version;
    std::uint32_t is_mm;
    std::uint32_t blocks;
    std::uint32_t nodes;
    std::uint32_t triangles;
    std::uint32_t title_size;
};

struct BlockRecord {
    std::uint32_t nodes;
    std::uint32_t triangles;
    std::uint32_t flags;
    std::int32_t colour;
};

static_assert(sizeof(HeaderRecord) == 28 && sizeof(BlockRecord) == 16, "no padding");

}  // namespace nmk_nmknmt
