// fbaAllocator: blocks of one fixed size, taken from large pages.
//
// A block needs no heap call of its own. Freed blocks are reused; the pages are released when the
// allocator is destroyed, together with every block that was not freed. Nothing is constructed or
// destroyed in the blocks. For one thread at a time.
#pragma once

#include <ncamcontainer/coPrf.h>
#include <utils/utExport.h>

#include <cstddef>
#include <vector>

class UT_EXPORT fbaAllocator {
  public:
    /// `block_size` is in bytes; both arguments count as 1 when they are less. A block is aligned
    /// for every type of at most its size without extended alignment, and a block whose size is a
    /// power of two crosses as few cache lines as possible.
    fbaAllocator(int block_size, int blocks_per_page);
    fbaAllocator(const fbaAllocator&) = delete;
    fbaAllocator& operator=(const fbaAllocator&) = delete;
    ~fbaAllocator();

    /// A block with undefined bytes. Throws std::bad_alloc when no memory is available.
    void* allocate() {
        if (m_freed != nullptr) return reuse();
        if (m_unused == m_unused_end) make_page();
        void* const block = m_unused;
        m_unused += m_block_size;
        return block;
    }

    /// Frees a block of this allocator for reuse; null is ignored.
    void free(void* block) noexcept;

    /// Number of pages allocated so far.
    int pages() const noexcept { return static_cast<int>(m_pages.size()); }

  private:
    void* reuse() noexcept;
    void make_page();

    std::size_t m_block_size;
    std::size_t m_blocks_per_page;
    std::byte* m_unused = nullptr;
    std::byte* m_unused_end = nullptr;
    void* m_freed = nullptr;  // head of a list of blocks, linked through their first bytes
    std::vector<void*> m_pages;
};

using fbaAllocatorcoPrf = coPrf<fbaAllocator>;
