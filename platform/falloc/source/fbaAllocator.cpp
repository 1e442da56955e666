#include <falloc/fbaAllocator.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace {

// The size of a cache line, in bytes.
constexpr std::align_val_t page_alignment{64};

std::size_t at_least_one(int number) { return number > 0 ? static_cast<std::size_t>(number) : 1; }

// At least the size of a link in the list of freed blocks, and a multiple of the alignment: the
// largest power of two that is not above the size, and not above the alignment of std::max_align_t.
std::size_t rounded_block_size(std::size_t size) {
    const std::size_t wanted = std::max(size, sizeof(void*));
    const std::size_t unit = std::min(std::bit_floor(wanted), alignof(std::max_align_t));
    return (wanted + unit - 1) / unit * unit;
}

}  // namespace

fbaAllocator::fbaAllocator(int block_size, int blocks_per_page)
    : m_block_size(rounded_block_size(at_least_one(block_size))),
      m_blocks_per_page(at_least_one(blocks_per_page)) {}

fbaAllocator::~fbaAllocator() {
    for (void* page : m_pages) ::operator delete(page, page_alignment);
}

void fbaAllocator::free(void* block) noexcept {
    if (block == nullptr) return;
    std::memcpy(block, &m_freed, sizeof m_freed);
    m_freed = block;
}

void* fbaAllocator::reuse() noexcept {
    void* const block = m_freed;
    std::memcpy(&m_freed, block, sizeof m_freed);
    return block;
}

void fbaAllocator::make_page() {
    const std::size_t bytes = m_block_size * m_blocks_per_page;
    m_pages.push_back(nullptr);
    m_pages.back() = ::operator new(bytes, page_alignment);
    m_unused = static_cast<std::byte*>(m_pages.back());
    m_unused_end = m_unused + bytes;
}
