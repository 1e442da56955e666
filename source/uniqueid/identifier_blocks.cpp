#include "identifier_blocks.h"

namespace {

// Empties the list of its thread when that ends.
struct ReturnAtExit {
    ReturnAtExit() = default;
    ReturnAtExit(const ReturnAtExit&) = delete;
    ReturnAtExit& operator=(const ReturnAtExit&) = delete;
    ~ReturnAtExit() {
        nmk_uniqueid::KeptBlocks& kept = nmk_uniqueid::kept_blocks;
        kept.room = 0;
        while (kept.first != nullptr) {
            nmk_uniqueid::IdentifierBlock* const block = kept.first;
            kept.first = block->next;
            ::operator delete(block);
        }
    }
};

}  // namespace

constinit thread_local nmk_uniqueid::KeptBlocks nmk_uniqueid::kept_blocks;

void nmk_uniqueid::give_block_back_without_room(void* block) noexcept {
    if (kept_blocks.is_in_use) {
        ::operator delete(block);
        return;
    }
    thread_local const ReturnAtExit at_exit;
    kept_blocks.is_in_use = true;
    kept_blocks.room = most_blocks_kept;
    keep_identifier_block(block);
}
