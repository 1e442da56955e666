#include <nmktoolbox/files/nmkdelete_all.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

TEST(nmkdelete_all, takes_every_such_byte_out) {
    utString text("banana");
    EXPECT_EQ(nmkdelete_all(text, 'a'), 3);
    EXPECT_EQ(text.view(), "bnn");
    EXPECT_EQ(nmkdelete_all(text, 'x'), 0);
    EXPECT_EQ(text.view(), "bnn");
}

TEST(nmkdelete_all, can_leave_an_empty_text) {
    utString text("aa");
    EXPECT_EQ(nmkdelete_all(text, 'a'), 2);
    EXPECT_EQ(text, utString(""));
}

TEST(nmkdelete_all, leaves_a_text_of_one_byte_alone_even_if_it_is_that_byte) {
    utString text("a");
    EXPECT_EQ(nmkdelete_all(text, 'a'), 0);
    EXPECT_EQ(text.view(), "a");
}

TEST(nmkdelete_all, leaves_null_and_empty_alone) {
    utString null;
    utString empty("");
    EXPECT_EQ(nmkdelete_all(null, 'a'), 0);
    EXPECT_EQ(nmkdelete_all(empty, 'a'), 0);
    EXPECT_TRUE(null.is_null());
    EXPECT_EQ(empty, utString(""));
}

TEST(nmkdelete_all, counts_bytes_of_longer_characters) {
    utString text(std::string(euro) + "\xFF" + std::string("\0", 1));
    EXPECT_EQ(nmkdelete_all(text, '\0'), 1);
    EXPECT_EQ(nmkdelete_all(text, '\xFF'), 1);
    EXPECT_EQ(nmkdelete_all(text, '\x82'), 1);
    EXPECT_EQ(text.view(), "\xE2\xAC");
}
