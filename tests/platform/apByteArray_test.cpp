// Arrays of bytes.
#include <apsl/apByteArray.h>
#include <gtest/gtest.h>

#include <numeric>

TEST(apByteArray, holds_a_copy_of_the_bytes) {
    char bytes[] = {'a', '\0', '\xFF'};
    const apByteArray array(bytes, 3);
    bytes[0] = 'b';
    EXPECT_EQ(array.size(), 3);
    EXPECT_EQ(array[0], 'a');
    EXPECT_EQ(array[2], 0xFF);
    EXPECT_EQ(array.view(), std::string_view("a\0\xFF", 3));
    EXPECT_EQ(std::accumulate(array.begin(), array.end(), 0), 'a' + 0xFF);
}

TEST(apByteArray, of_no_bytes_is_empty) {
    EXPECT_TRUE(apByteArray().is_empty());
    EXPECT_EQ(apByteArray(nullptr, 0), apByteArray());
    EXPECT_EQ(apByteArray("abc", -1).size(), 0);
    EXPECT_EQ(apByteArray().view(), "");
}

TEST(apByteArray, compares_and_copies_by_its_bytes) {
    const apByteArray first(std::string_view("ab"));
    apByteArray second = first;
    EXPECT_EQ(first, second);
    second.data()[1] = 'c';
    EXPECT_NE(first, second);
    EXPECT_EQ(first.view(), "ab");
}
