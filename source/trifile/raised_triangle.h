// raised_triangle.h: triangles whose nodes follow others in a block.
#pragma once

#include <geometry/giTriangle.h>

#include <cstdint>

namespace nmk_trifile {

/// The triangle with `by` added to each index; forged indices wrap.
inline giTriangle raised(const giTriangle& triangle, std::int32_t by) noexcept {
    const auto sum = [by](std::int32_t index) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(index) +
                                         static_cast<std::uint32_t>(by));
    };
    return {sum(triangle[0]), sum(triangle[1]), sum(triangle[2])};
}

/// Whether each index is at least 0 and below `nodes`.
inline bool is_inside(const giTriangle& triangle, std::int32_t nodes) noexcept {
    const auto inside = [nodes](std::int32_t index) { return index >= 0 && index < nodes; };
    return inside(triangle[0]) && inside(triangle[1]) && inside(triangle[2]);
}

}  // namespace nmk_trifile
