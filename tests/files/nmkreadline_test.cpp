#include <nmktoolbox/files/nmkreadline.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::vector<std::string> lines_of(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    utString line;
    while (nmkreadline(stream, line, '\n', 1)) {
        lines.emplace_back(line.view());
    }
    return lines;
}

using Lines = std::vector<std::string>;

}  // namespace

TEST(nmkreadline, gives_every_line_to_a_loop) {
    EXPECT_EQ(lines_of("a\nb\n"), (Lines{"a", "b"}));
    EXPECT_EQ(lines_of("\n\na\n\n"), (Lines{"", "", "a", ""}));
    EXPECT_EQ(lines_of(""), Lines{});
    EXPECT_EQ(lines_of("\n"), Lines{""});
}

TEST(nmkreadline, keeps_an_unterminated_last_line) {
    EXPECT_EQ(lines_of("a\nb"), (Lines{"a", "b"}));
    EXPECT_EQ(lines_of("a"), Lines{"a"});
}

TEST(nmkreadline, keeps_every_byte) {
    const std::string text("a\0b\xFF\xE2\r", 6);
    EXPECT_EQ(lines_of(text + "\n"), Lines{text});
}

TEST(nmkreadline, leaves_the_delimiter_unless_it_is_to_be_skipped) {
    std::istringstream stream("a;b;");
    utString line;
    EXPECT_TRUE(nmkreadline(stream, line, ';', 0));
    EXPECT_EQ(line.view(), "a");
    EXPECT_EQ(stream.peek(), ';');
    EXPECT_TRUE(nmkreadline(stream, line, ';', 2)) << "only 1 skips";
    EXPECT_EQ(line.view(), "");
    EXPECT_EQ(stream.peek(), ';');
    EXPECT_TRUE(nmkreadline(stream, line, ';', 1));
    EXPECT_EQ(line.view(), "");
    EXPECT_TRUE(nmkreadline(stream, line, ';', 1));
    EXPECT_EQ(line.view(), "b");
}

TEST(nmkreadline, gives_an_empty_line_and_a_failed_stream_at_the_end) {
    std::istringstream stream("");
    utString line("before");
    EXPECT_FALSE(nmkreadline(stream, line, '\n', 1));
    EXPECT_EQ(line, utString(""));
    EXPECT_TRUE(stream.eof());
}

TEST(nmkreadline, answers_the_stream_itself) {
    std::istringstream stream("x");
    utString line;
    EXPECT_EQ(&nmkreadline(stream, line, '\n', 1), &stream);
    EXPECT_TRUE(stream.eof());
    EXPECT_FALSE(stream.fail());
}

TEST(nmkreadline, takes_a_byte_above_ascii_for_a_delimiter) {
    std::istringstream stream(
        "a\xFF"
        "b");
    utString line;
    EXPECT_TRUE(nmkreadline(stream, line, '\xFF', 1));
    EXPECT_EQ(line.view(), "a");
    EXPECT_TRUE(nmkreadline(stream, line, '\xFF', 1));
    EXPECT_EQ(line.view(), "b");
}

TEST(nmkreadline, leaves_a_broken_stream_broken) {
    std::istringstream stream("x");
    stream.setstate(std::ios_base::badbit);
    utString line;
    EXPECT_FALSE(nmkreadline(stream, line, '\n', 1));
    EXPECT_TRUE(stream.bad());
}
