// utString: the two empty states, appending, searching and extracting.

#include <utils/utString.h>

#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

TEST(utString, the_null_string_and_the_empty_text_are_different) {
    const utString null;
    const utString empty("");
    EXPECT_TRUE(null.is_null());
    EXPECT_FALSE(empty.is_null());
    EXPECT_TRUE(null.is_empty());
    EXPECT_TRUE(empty.is_empty());
    EXPECT_FALSE(null == empty);
    EXPECT_TRUE(null < empty);
    EXPECT_EQ(null.c_str(), nullptr);
    EXPECT_STREQ(empty.c_str(), "");
    EXPECT_EQ(null.length(), 0);
}

TEST(utString, a_null_pointer_makes_the_null_string) {
    EXPECT_TRUE(utString(static_cast<const char*>(nullptr)).is_null());
}

TEST(utString, copies_the_text) {
    std::string text = "abc";
    const utString copy(text.c_str());
    text[0] = 'x';
    EXPECT_STREQ(copy.c_str(), "abc");
    EXPECT_EQ(copy.length(), 3);
    EXPECT_EQ(copy, utString("abc"));
    EXPECT_FALSE(copy == utString("abd"));
    EXPECT_TRUE(copy < utString("abd"));
}

TEST(utString, keeps_a_nul_inside_a_sized_text) {
    const utString text(std::string("a\0b", 3));
    EXPECT_EQ(text.length(), 3);
    EXPECT_FALSE(text == utString("a"));
}

TEST(utString, set_invalid_makes_the_null_string) {
    utString text("abc");
    text.set_invalid();
    EXPECT_TRUE(text.is_null());
}

TEST(utString, a_text_is_assigned_and_null_too) {
    utString text;
    text = "abc";
    EXPECT_STREQ(text.c_str(), "abc");
    text = text.c_str() + 1;
    EXPECT_STREQ(text.c_str(), "bc");
    text = "";
    EXPECT_FALSE(text.is_null());
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.is_null());
}

TEST(utString, compares_with_a_literal_and_with_null) {
    EXPECT_TRUE(utString("abc") == "abc");
    EXPECT_TRUE("abc" == utString("abc"));
    EXPECT_TRUE(utString("abc") != "ab");
    EXPECT_TRUE(utString() != "");
    EXPECT_TRUE(utString() == static_cast<const char*>(nullptr));
    EXPECT_TRUE(utString("") != static_cast<const char*>(nullptr));
    EXPECT_TRUE(utString(std::string("a\0b", 3)) != "a");
}

TEST(utString, takes_ownership_of_a_buffer) {
    const auto buffer = new char[4]{'a', 'b', '\0', 'c'};
    const utString text(utStringClaim(), buffer);
    EXPECT_STREQ(text.c_str(), "ab");
    EXPECT_EQ(text.length(), 2);
    EXPECT_TRUE(utString(utStringClaim(), nullptr).is_null());
}

TEST(utString, appending_null_keeps_the_null_string_and_appending_the_empty_text_does_not) {
    utString text;
    text += utString();
    text += static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.is_null());
    text += "";
    EXPECT_FALSE(text.is_null());
    EXPECT_TRUE(text.is_empty());
    EXPECT_TRUE((utString() + utString()).is_null());
    EXPECT_EQ(utString() + "a", "a");
    EXPECT_EQ(utString("a") + utString(), "a");
}

TEST(utString, appends_texts_and_characters) {
    utString text("a");
    text += utString("b");
    text += "c";
    text += 'd';
    text << "e" << 'f' << utString("g") << std::string_view("h");
    EXPECT_EQ(text, "abcdefgh");
    text += text;
    EXPECT_EQ(text, "abcdefghabcdefgh");
    EXPECT_EQ("<" + utString("x") + '>' + "!", "<x>!");
}

TEST(utString, appends_a_part_of_itself) {
    utString text("0123456789012345678901234567890");
    text += text.c_str() + 21;
    EXPECT_EQ(text, "01234567890123456789012345678901234567890");
}

TEST(utString, a_nul_inside_is_appended_and_found) {
    utString text(std::string("a\0b", 3));
    text += '\0';
    text += "c";
    EXPECT_EQ(text.length(), 5);
    EXPECT_EQ(text[1], '\0');
    EXPECT_EQ(text[2], 'b');
    EXPECT_EQ(text.locate_substring(utString(std::string(1, '\0'))), 1);
    EXPECT_EQ(text.locate_substring("c"), 4);
    EXPECT_EQ(text.substring(1, 3).length(), 3);
}

TEST(utString, a_byte_outside_is_nul) {
    const utString text("ab");
    EXPECT_EQ(text[0], 'a');
    EXPECT_EQ(text[1], 'b');
    EXPECT_EQ(text[2], '\0');
    EXPECT_EQ(text[-1], '\0');
    EXPECT_EQ(utString()[0], '\0');
}

TEST(utString, locates_a_substring_from_a_start) {
    const utString text("a//b//c");
    EXPECT_EQ(text.locate_substring("//"), 1);
    EXPECT_EQ(text.locate_substring("//", 2), 4);
    EXPECT_EQ(text.locate_substring("//", 5), -1);
    EXPECT_EQ(text.locate_substring("//", -7), 1);
    EXPECT_EQ(text.locate_substring("a//b//c", 0), 0);
    EXPECT_EQ(text.locate_substring("a//b//cd"), -1);
    EXPECT_EQ(text.locate_substring("", 3), 3);
    EXPECT_EQ(text.locate_substring("", 7), 7);
    EXPECT_EQ(text.locate_substring("", 8), -1);
    EXPECT_EQ(text.locate_substring(utString()), -1);
    EXPECT_EQ(utString().locate_substring(""), -1);
}

TEST(utString, extracts_component_after_component) {
    utString text("//srv//sh/dir/");
    utString taken;
    EXPECT_NE(text.extract_string('/', taken), 0);
    EXPECT_EQ(taken, "srv");
    EXPECT_EQ(text, "/sh/dir/");
    EXPECT_NE(text.extract_string('/', taken), 0);
    EXPECT_EQ(taken, "sh");
    EXPECT_NE(text.extract_string('/', taken), 0);
    EXPECT_EQ(taken, "dir");
    EXPECT_EQ(text, "");
    EXPECT_EQ(text.extract_string('/', taken), 0);
    EXPECT_TRUE(taken.is_null());
    EXPECT_FALSE(text.is_null());
}

TEST(utString, extracts_nothing_from_delimiters_only_or_from_null) {
    utString taken("before");
    utString delimiters("///");
    EXPECT_EQ(delimiters.extract_string('/', taken), 0);
    EXPECT_EQ(delimiters, "");
    EXPECT_TRUE(taken.is_null());
    utString null;
    EXPECT_EQ(null.extract_string('/', taken), 0);
    EXPECT_TRUE(null.is_null());
}

TEST(utString, extracts_the_whole_text_when_there_is_no_delimiter) {
    utString text("abc");
    utString taken;
    EXPECT_NE(text.extract_string('/', taken), 0);
    EXPECT_EQ(taken, "abc");
    EXPECT_EQ(text, "");
}

TEST(utString, a_substring_is_limited_to_the_text) {
    const utString text("abc");
    EXPECT_EQ(text.substring(1, 1), "b");
    EXPECT_EQ(text.substring(1, 100), "bc");
    EXPECT_EQ(text.substring(3, 1), "");
    EXPECT_EQ(text.substring(100, 1), "");
    EXPECT_EQ(text.substring(-5, 2), "ab");
    EXPECT_EQ(text.substring(1, -1), "");
    EXPECT_TRUE(utString().substring(0, 1).is_null());
}

TEST(utString, is_written_to_a_stream_with_all_its_bytes) {
    std::ostringstream stream;
    stream << utString(std::string("a\0b", 3)) << utString() << utString("");
    EXPECT_EQ(stream.str(), std::string("a\0b", 3));
}
