#include "BinaryFacets.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace nmk_stlfile {

namespace {

constexpr std::uint32_t facets_at_once = 1000;
constexpr auto facet_size = static_cast<std::size_t>(binary_facet_size);
constexpr std::size_t normal_size = 12;

static_assert(std::endian::native == std::endian::little, "numbers are read as they are in files");

}  // namespace

BinaryFacets::BinaryFacets(apINMKFile& file, std::uint32_t count)
    : m_file(&file), m_unread(count) {}

int BinaryFacets::read(double* const corners) {
    if (m_end - m_at < facet_size) fill();
    if (m_end - m_at < facet_size) return 3;
    float values[9];
    std::memcpy(values, m_piece.data() + m_at + normal_size, sizeof values);
    for (int i = 0; i < 9; ++i) corners[i] = static_cast<double>(values[i]);
    m_at += facet_size;
    return 0;
}

// What is left of a facet that the file does not hold whole is dropped.
void BinaryFacets::fill() {
    const std::uint32_t facets = std::min(m_unread, facets_at_once);
    m_unread -= facets;
    m_piece.resize(facets * facet_size);
    m_at = 0;
    m_end = m_file->read(m_piece.data(), 1, m_piece.size());
}

}  // namespace nmk_stlfile
