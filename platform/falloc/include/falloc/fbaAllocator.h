// fbaAllocator: blocks of one fixed size, taken from big pages.
//
// A block costs no heap call of its own. Blocks that are given back are handed out again; the pages
// themselves go when the allocator goes, with every block that was not given back. Nothing is
// constructed or destroyed in the blocks. For one thread at a time.
#pragma once

#include <ncamcontainer/coPrf.h>
#include <utils/utExport.h>

#include <cstddef>
#include <vector>

class UT_EXPORT fbaAllocator {
  public:
    /// `block_size` in bytes; both numbers count as 1 where they are less. A block is aligned for
    /// every ordinary type of at most its size, and one whose size is a power of two never lies
    /// across more cache lines than it must.
    fbaAllocator(int block_size, int blocks_per_page);
    fbaAllocator(const fbaAllocator&) = delete;
    fbaAllocator& operator=(const fbaAllocator&) = delete;
    ~fbaAllocator();

    /// A block, its bytes undefined. Throws std::bad_alloc when there is no memory.
    void* allocate() {
        if (given_back_ != nullptr) return reuse();
        if (fresh_ == fresh_end_) make_page();
        void* const block = fresh_;
        fresh_ += block_size_;
        return block;
    }

    /// Gives a block of this allocator back; null is passed over.
    void free(void* block) noexcept;

    /// Pages that were made so far.
    int pages() const noexcept { return static_cast<int>(pages_.size()); }

  private:
    void* reuse() noexcept;
    void make_page();

    std::size_t block_size_;
    std::size_t blocks_per_page_;
    std::byte* fresh_ = nullptr;
    std::byte* fresh_end_ = nullptr;
    void* given_back_ = nullptr;  // head of a list through the first bytes of the blocks
    std::vector<void*> pages_;
};

using fbaAllocatorcoPrf = coPrf<fbaAllocator>;
