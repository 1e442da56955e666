// giTriangle.h: a triangle and what is known of its neighbours, by numbers.
//
// Edge k of a triangle goes from its node k to its node (k + 1) modulo 3.
#pragma once

#include <ncamcontainer/coPageArr.h>
#include <utils/utExport.h>

#include <cstddef>
#include <cstdint>

/// Three numbers, read and written by index 0 to 2; each -1 at first.
class giIndexTriple {
  public:
    giIndexTriple() noexcept = default;
    giIndexTriple(std::int32_t first, std::int32_t second, std::int32_t third) noexcept
        : m_index{first, second, third} {}

    std::int32_t& operator[](int corner) noexcept {
        return m_index[static_cast<std::size_t>(corner)];
    }
    std::int32_t operator[](int corner) const noexcept {
        return m_index[static_cast<std::size_t>(corner)];
    }

    bool operator==(const giIndexTriple&) const noexcept = default;

  private:
    std::int32_t m_index[3] = {-1, -1, -1};
};

/// The indices of the three nodes in their block, counter-clockwise seen from outside.
class giTriangle : public giIndexTriple {
  public:
    using giIndexTriple::giIndexTriple;
};

/// The index of the neighbouring triangle across each edge, -1 where there is none.
class giLink : public giIndexTriple {
  public:
    using giIndexTriple::giIndexTriple;
};

static_assert(sizeof(giTriangle) == 12 && sizeof(giLink) == 12, "three 32-bit numbers");

using giTriArr = coPageArr<giTriangle>;

/// The links of a block's triangles, at the same indices.
class UT_EXPORT giLinkArr : public coPageArr<giLink> {
  public:
    /// Pages of the size that was set last, or of the usual size.
    giLinkArr();

    /// Arrays that are made from now on get pages for about `elements` elements, within limits;
    /// shared by the process. Any number is accepted.
    static void set_page_size(int elements);
};
