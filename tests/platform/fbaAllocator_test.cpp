#include <falloc/fbaAllocator.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>

TEST(fbaAllocator, returns_blocks_that_do_not_overlap) {
    fbaAllocator allocator(24, 7);
    std::set<std::uintptr_t> blocks;
    for (int i = 0; i < 100; ++i) {
        void* const block = allocator.allocate();
        std::memset(block, i, 24);
        blocks.insert(reinterpret_cast<std::uintptr_t>(block));
    }
    std::uintptr_t free_from = 0;
    for (const std::uintptr_t block : blocks) {
        EXPECT_GE(block, free_from);
        free_from = block + 24;
    }
    EXPECT_EQ(blocks.size(), 100U);
}

TEST(fbaAllocator, makes_a_page_only_when_the_last_one_is_used_up) {
    fbaAllocator allocator(32, 50);
    EXPECT_EQ(allocator.pages(), 0);
    for (int i = 0; i < 50; ++i) allocator.allocate();
    EXPECT_EQ(allocator.pages(), 1);
    allocator.allocate();
    EXPECT_EQ(allocator.pages(), 2);
}

TEST(fbaAllocator, reuses_freed_blocks) {
    fbaAllocator allocator(16, 4);
    void* const first = allocator.allocate();
    void* const second = allocator.allocate();
    allocator.free(first);
    allocator.free(nullptr);
    allocator.free(second);
    EXPECT_EQ(allocator.allocate(), second);
    EXPECT_EQ(allocator.allocate(), first);
    EXPECT_EQ(allocator.pages(), 1);
}

TEST(fbaAllocator, aligns_blocks_for_every_type_that_fits) {
    for (const int size : {1, 3, 8, 12, 16, 24, 40}) {
        fbaAllocator allocator(size, 5);
        for (int i = 0; i < 12; ++i) {
            const auto block = reinterpret_cast<std::uintptr_t>(allocator.allocate());
            EXPECT_EQ(block % (size >= 16 ? 16U : 8U), 0U) << size;
        }
    }
}

TEST(fbaAllocator, takes_numbers_below_one_as_one) {
    fbaAllocator allocator(0, -1);
    EXPECT_NE(allocator.allocate(), allocator.allocate());
}
