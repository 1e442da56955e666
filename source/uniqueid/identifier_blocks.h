// identifier_blocks.h: memory for identifiers.
//
// Making and dropping an identifier costs less than a call of the heap, so each thread keeps a few
// blocks that were given back for the next ones. They go back to the heap when the thread ends.
#pragma once

#include <cstddef>
#include <new>

namespace nmk_uniqueid {

constexpr std::size_t identifier_block_size = 16;
constexpr int most_blocks_kept = 64;

struct IdentifierBlock {
    IdentifierBlock* next;
};
static_assert(sizeof(IdentifierBlock) <= identifier_block_size);

/// What a thread keeps. Never destroyed, so that identifiers may go after everything else of their
/// thread has: their blocks then go straight to the heap.
struct KeptBlocks {
    IdentifierBlock* first = nullptr;
    int room = 0;  // how many more are kept; 0 before the thread keeps any and when it has ended
    bool is_in_use = false;  // this thread has made room, once
};

// In the thread storage that is laid out at start, so that reaching it costs no call.
[[gnu::tls_model("initial-exec")]] extern constinit thread_local KeptBlocks kept_blocks;

/// For a thread that has no room: makes room where it has kept none yet, and keeps the block, or
/// gives it to the heap.
void give_block_back_without_room(void* block) noexcept;

/// A block for one identifier; throws std::bad_alloc when there is no memory.
inline void* take_identifier_block() {
    IdentifierBlock* const block = kept_blocks.first;
    if (block == nullptr) return ::operator new(identifier_block_size);
    kept_blocks.first = block->next;
    ++kept_blocks.room;
    return block;
}

/// Keeps a block that has room in the list of its thread.
inline void keep_identifier_block(void* block) noexcept {
    kept_blocks.first = new (block) IdentifierBlock{kept_blocks.first};
    --kept_blocks.room;
}

/// Gives a block back, on any thread.
inline void give_identifier_block_back(void* block) noexcept {
    if (kept_blocks.room > 0) {
        keep_identifier_block(block);
    } else {
        give_block_back_without_room(block);
    }
}

}  // namespace nmk_uniqueid
