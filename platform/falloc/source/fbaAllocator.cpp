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
    : block_size_(rounded_block_size(at_least_one(block_size))),
      blocks_per_page_(at_least_one(blocks_per_page)) {}

fbaAllocator::~fbaAllocator() {
    for (void* page : pages_) ::operator delete(page, page_alignment);
}

void fbaAllocator::free(void* block) noexcept {
    if (block == nullptr) return;
    std::memcpy(block, &given_back_, sizeof given_back_);
    given_back_ = block;
}

void* fbaAllocator::reuse() noexcept {
    void* const block = given_back_;
    std::memcpy(&given_back_, block, sizeof given_back_);
    return block;
}

void fbaAllocator::make_page() {
    const std::size_t bytes = block_size_ * blocks_per_page_;
    pages_.push_back(nullptr);
    pages_.back() = ::operator new(bytes, page_alignment);
    fresh_ = static_cast<std::byte*>(pages_.back());
    fresh_end_ = fresh_ + bytes;
}
