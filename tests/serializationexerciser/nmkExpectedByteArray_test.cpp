#include <gtest/gtest.h>
#include <nmktoolbox/serializationexerciser.h>

#include <string_view>

TEST(nmkExpectedByteArray, has_neither_value_nor_error_at_first) {
    const nmkExpectedByteArray none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.value_ptr(), nullptr);
    EXPECT_TRUE(none.error().is_empty());
}

TEST(nmkExpectedByteArray, of_an_empty_text_is_false_with_an_empty_error) {
    for (const utString& text : {utString(""), utString()}) {
        const nmkExpectedByteArray failed(text);
        EXPECT_FALSE(failed);
        EXPECT_TRUE(failed.error().is_empty());
    }
}

TEST(nmkExpectedByteArray, of_a_text_has_it_as_its_error) {
    const nmkExpectedByteArray failed(utString("no such entry"));
    EXPECT_FALSE(failed);
    EXPECT_EQ(failed.value_ptr(), nullptr);
    EXPECT_EQ(failed.error(), "no such entry");
}

TEST(nmkExpectedByteArray, copies_the_bytes_that_it_is_made_of) {
    using namespace std::string_view_literals;
    apByteArray bytes("a\0b"sv);
    const nmkExpectedByteArray expected(bytes);
    bytes.data()[0] = 'x';
    EXPECT_TRUE(expected);
    EXPECT_EQ(expected.value_ptr()->view(), "a\0b"sv);
    EXPECT_TRUE(expected.error().is_empty());
}

TEST(nmkExpectedByteArray, takes_an_empty_array_for_a_value) {
    const nmkExpectedByteArray expected{apByteArray()};
    EXPECT_TRUE(expected);
    EXPECT_EQ(expected.value_ptr()->size(), 0);
}

TEST(nmkExpectedByteArray, copies_share_one_byte_array) {
    const nmkExpectedByteArray expected{apByteArray(std::string_view("abc"))};
    const nmkExpectedByteArray copy(expected);
    nmkExpectedByteArray assigned(utString("before"));
    assigned = expected;
    EXPECT_EQ(copy.value_ptr(), expected.value_ptr());
    EXPECT_EQ(assigned.value_ptr(), expected.value_ptr());
    EXPECT_TRUE(assigned.error().is_empty());
    copy.value_ptr()->data()[0] = 'x';
    EXPECT_EQ(expected.value_ptr()->view(), "xbc");
}
