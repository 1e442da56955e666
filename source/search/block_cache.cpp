#include "search/block_cache.h"

#include <array>

namespace nmk_search {

namespace {

// Sizes that fill the usual heaps' blocks: a multiple of the step, less the heap's own word.
constexpr std::size_t size_step = 16;
constexpr std::size_t heap_word = sizeof(std::size_t);
constexpr std::size_t shelf_of(std::size_t size) { return (size + heap_word - 1) / size_step; }
constexpr std::size_t size_on(std::size_t shelf) { return (shelf + 1) * size_step - heap_word; }
constexpr std::size_t sizes = shelf_of(largest_cached_block) + 1;

#ifdef __SANITIZE_ADDRESS__
constexpr int most_kept = 0;  // so that a block that is used after it was freed is noticed
#else
constexpr int most_kept = 256;
#endif

struct Free_block {
    Free_block* next;
};

struct Shelf {
    Free_block* first;
    int room;
};

// Nodes may be freed after the thread's own variables are gone. These are never destroyed; before
// a thread has a Janitor, and once it is gone, there is no room for a block.
thread_local std::array<Shelf, sizes> shelves{};

struct Janitor {
    Janitor() {
        for (Shelf& shelf : shelves) shelf.room = most_kept;
    }
    ~Janitor() {
        for (Shelf& shelf : shelves) {
            shelf.room = 0;
            while (shelf.first != nullptr) {
                ::operator delete(std::exchange(shelf.first, shelf.first->next));
            }
        }
    }
};

void* take_from_heap(std::size_t size) {
    thread_local const Janitor janitor;
    return ::operator new(size_on(shelf_of(size)));
}

}  // namespace

void* take_block(std::size_t size) {
    Shelf& shelf = shelves[shelf_of(size)];
    if (shelf.first == nullptr) return take_from_heap(size);
    ++shelf.room;
    return std::exchange(shelf.first, shelf.first->next);
}

void give_block_back(void* block, std::size_t size) noexcept {
    Shelf& shelf = shelves[shelf_of(size)];
    if (shelf.room == 0) return ::operator delete(block);
    --shelf.room;
    shelf.first = new (block) Free_block{shelf.first};
}

}  // namespace nmk_search
