#include <nmktoolbox/files/nmk_text_to_html.h>

#include "files/plain_replace.h"
#include "files/text_samples.h"

#include <gtest/gtest.h>

namespace {

/// One replacement after the other, the ampersand first.
std::string plain_text_to_html(std::string text) {
    const std::pair<std::string, std::string> steps[] = {{"&", "&amp;"},  {"\"", "&quot;"},
                                                         {"'", "&apos;"}, {"<", "&lt;"},
                                                         {">", "&gt;"},   {"\n", "<br/>"}};
    for (const auto& [from, to] : steps) {
        int count = 0;
        text = plain_replace(text, from, to, count);
    }
    return text;
}

}  // namespace

TEST(nmk_text_to_html, replaces_what_html_reads_as_markup) {
    EXPECT_EQ(nmk_text_to_html("a<b> & \"c\" 'd'\n").view(),
              "a&lt;b&gt; &amp; &quot;c&quot; &apos;d&apos;<br/>");
    EXPECT_EQ(nmk_text_to_html("&amp;").view(), "&amp;amp;");
    EXPECT_EQ(nmk_text_to_html("plain\r").view(), "plain\r");
    EXPECT_EQ(nmk_text_to_html("<").view(), "&lt;");
}

TEST(nmk_text_to_html, gives_null_and_empty_back_as_they_are) {
    EXPECT_TRUE(nmk_text_to_html(utString()).is_null());
    EXPECT_EQ(nmk_text_to_html(""), utString(""));
}

TEST(nmk_text_to_html, brings_every_other_byte_through) {
    const std::string text = "\xFF" + std::string(smiley) + std::string("\0", 1) + "\xE2";
    EXPECT_EQ(nmk_text_to_html(utString(text + "&")).view(), text + "&amp;");
}

TEST(nmk_text_to_html, agrees_with_one_replacement_after_the_other) {
    constexpr unsigned seed = 20260804;
    std::mt19937_64 draw(seed);
    const std::string_view telling = "&<>\"'\n;ab";
    for (int round = 0; round < 10000; ++round) {
        std::string text = random_bytes(draw, 10);
        for (int i = 0; i < 8; ++i) {
            text += telling[draw() % telling.size()];
        }
        ASSERT_EQ(nmk_text_to_html(utString(text)).view(), plain_text_to_html(text))
            << "seed " << seed << ", round " << round;
    }
}
