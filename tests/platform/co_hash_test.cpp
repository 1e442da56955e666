#include <gtest/gtest.h>
#include <ncamcontainer/co_hash.h>

#include <set>
#include <string>

TEST(co_hash, is_the_same_for_the_same_bytes_at_any_address) {
    const std::string text = "a range of bytes";
    const std::string shifted = "x" + text;
    const int size = static_cast<int>(text.size());
    EXPECT_EQ(co_hash(text.data(), size), co_hash(shifted.data() + 1, size));
}

TEST(co_hash, depends_on_every_byte_and_on_the_size) {
    const std::string text(300, 'a');
    const int size = static_cast<int>(text.size());
    std::set<unsigned int> hashes{co_hash(text.data(), size)};
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string changed = text;
        changed[i] = 'b';
        hashes.insert(co_hash(changed.data(), size));
        hashes.insert(co_hash(text.data(), static_cast<int>(i)));
    }
    EXPECT_EQ(hashes.size(), 601U);
}

TEST(co_hash, no_bytes_have_one_hash_whatever_the_pointer) {
    EXPECT_EQ(co_hash(nullptr, 0), co_hash("text", 0));
    EXPECT_EQ(co_hash(nullptr, 0), co_hash("text", -1));
}
