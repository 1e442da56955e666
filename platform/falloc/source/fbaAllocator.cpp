#include <falloc/fbaAllocator.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace {

// A cache line.
constexpr std::align_val_t page_alignment{64};

std::size_t at_least_one(int number) { return number > 0 ? static_cast<std::size_t>(number) : 1; }

// Room for the link of the list of given-back blocks, and a multiple of what the block is aligned
// to: the largest power of two that is not above its size, within reason.
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
    std::memcpy(block, &m_given_back, sizeof m_given_back);
    m_given_back = block;
}

void* fbaAllocator::reuse() noexcept {
    void* const block = m_given_back;
    std::memcpy(&m_given_back, block, sizeof m_given_back);
    return block;
}

void fbaAllocator::make_page() {
    const std::size_t bytes = m_block_size * m_blocks_per_page;
    m_pages.push_back(nullptr);
    m_pages.back() = ::operator new(bytes, page_alignment);
    m_fresh = static_cast<std::byte*>(m_pages.back());
    m_fresh_end = m_fresh + bytes;
}
