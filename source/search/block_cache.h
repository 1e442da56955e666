// block_cache.h: small blocks for what a search makes and drops by the million.
//
// Every thread keeps some blocks that were freed for the next ones of their size. Each block comes
// from the heap by itself, so it may be freed by any thread, and outlive the one that made it.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace nmk_search {

constexpr std::size_t largest_cached_block = 128;

/// A block of `size` bytes, at most largest_cached_block. Throws std::bad_alloc.
void* take_block(std::size_t size);

/// `size` is that with which the block was taken.
void give_block_back(void* block, std::size_t size) noexcept;

template <class T>
struct Block_allocator {
    static_assert(alignof(T) <= alignof(std::max_align_t));
    using value_type = T;

    Block_allocator() = default;
    template <class Other>
    Block_allocator(const Block_allocator<Other>&) noexcept {}

    // Shared pointers ask for one at a time, with the size of their counts added.
    T* allocate(std::size_t) {
        static_assert(sizeof(T) <= largest_cached_block);
        return static_cast<T*>(take_block(sizeof(T)));
    }
    void deallocate(T* block, std::size_t) noexcept { give_block_back(block, sizeof(T)); }

    template <class Other>
    bool operator==(const Block_allocator<Other>&) const noexcept {
        return true;
    }
};

/// std::make_shared, in such a block.
template <class T, class... Arguments>
std::shared_ptr<T> make_shared_in_block(Arguments&&... arguments) {
    return std::allocate_shared<T>(Block_allocator<T>(), std::forward<Arguments>(arguments)...);
}

}  // namespace nmk_search
