// BinaryFacets: the facets of a binary STL, read one after the other.
#pragma once

#include <stlfile/apINMKFile.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nmk_stlfile {

/// The header ends with the number of facets, which follow it.
constexpr std::int64_t binary_header_size = 84;
constexpr std::int64_t binary_facet_size = 50;

class BinaryFacets {
  public:
    /// Reads `count` facets from the file's position on, many at once.
    BinaryFacets(apINMKFile& file, std::uint32_t count);

    /// Reads the corners of the next facet: 0, or 3 where the file is cut. Normal and attribute are
    /// not looked at.
    int read(double* const corners);

  private:
    void fill();

    apINMKFile* m_file;
    std::uint32_t m_unread;  // facets that are still in the file
    std::vector<char> m_piece;
    std::size_t m_at = 0;
    std::size_t m_end = 0;
};

}  // namespace nmk_stlfile
