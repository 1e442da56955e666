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
        if (m_given_back != nullptr) return reuse();
        if (m_fresh == m_fresh_end) make_page();
        void* const block = m_fresh;
        m_fresh += m_block_size;
        return block;
    }

    /// Gives a block of this allocator back; null is passed over.
    void free(void* block) noexcept;

    /// Pages that were made so far.
    int pages() const noexcept { return static_cast<int>(m_pages.size()); }

  private:
    void* reuse() noexcept;
    void make_page();

    std::size_t m_block_size;
    std::size_t m_blocks_per_page;
    std::byte* m_fresh = nullptr;
    std::byte* m_fresh_end = nullptr;
    void* m_given_back = nullptr;  // head of a list through the first bytes of the blocks
    std::vector<void*> m_pages;
};

using fbaAllocatorcoPrf = coPrf<fbaAllocator>;
