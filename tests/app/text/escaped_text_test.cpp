// escaped_text, number_format, label_places: text from outside is escaped, numbers
// and labels are readable.

#include "text/escaped_text.h"

#include <gtest/gtest.h>

#include <string>

#include "app/text/plain_syntax.h"
#include "comma_locale.h"
#include "draw/label_places.h"
#include "text/number_format.h"

namespace {

using namespace nmk_text;

TEST(escaped_text, xml_has_no_markup_characters) {
    EXPECT_EQ(xml_text("<a href=\"x\">&'"), "&lt;a href=&quot;x&quot;&gt;&amp;&#39;");
    EXPECT_EQ(xml_text("caf\xC3\xA9"), "caf\xC3\xA9");
    EXPECT_EQ(xml_text(std::string("a\0b", 3)),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(xml_text("\xEF\xBF\xBF"), "\xEF\xBF\xBD");
}

TEST(escaped_text, a_line_stays_one_line) { EXPECT_EQ(line_text("a\r\nb\x1B[2J"), "a??b?[2J"); }

TEST(escaped_text, a_line_has_no_characters_that_a_terminal_acts_upon) {
    EXPECT_EQ(line_text("caf\xC3\xA9 \xC2\x9B"
                        "31m"),
              "caf\xC3\xA9 ?31m");
    EXPECT_EQ(line_text("a\xE2\x80\xAE"
                        "b\xE2\x80\xA8\xEF\xBB\xBF\x7F"),
              "a?b???");
}

TEST(escaped_text, a_quotation_shows_letters_and_no_control_characters) {
    EXPECT_EQ(nmk_text::quoted("caf\xC3\xA9 \xE6\xBC\xA2"), "\"caf\xC3\xA9 \xE6\xBC\xA2\"");
    EXPECT_EQ(nmk_text::quoted("\x1B[2J\x7F\n"), "\"\\x1b[2J\\x7f\\x0a\"");
    EXPECT_EQ(nmk_text::quoted("\xC2\x85\xC2\xA0"), "\"\\xc2\\x85\xC2\xA0\"");
    EXPECT_EQ(nmk_text::quoted("\xE2\x80\x8A\xE2\x80\x8B\xE2\x80\xAE\xE2\x80\xAF"),
              "\"\xE2\x80\x8A\\xe2\\x80\\x8b\\xe2\\x80\\xae\xE2\x80\xAF\"");
    EXPECT_EQ(nmk_text::quoted("\xFF\xC3"), "\"\\xff\\xc3\"");
}

TEST(escaped_text, a_quotation_is_cut_between_characters) {
    EXPECT_EQ(nmk_text::quoted(std::string(40, 'a')), "\"" + std::string(40, 'a') + "\"");
    EXPECT_EQ(nmk_text::quoted(std::string(41, 'a')), "\"" + std::string(40, 'a') + "\"...");
    EXPECT_EQ(nmk_text::quoted(std::string(39, 'a') + "\xC3\xA9z"),
              "\"" + std::string(39, 'a') + "\"...");
}

TEST(escaped_text, bytes_that_are_not_utf8_are_replaced) {
    for (const std::string bad : {"\xFF", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                                  "\xE2\x82", "\x80", "\xF0\x80\x80\x80"}) {
        const std::string text = line_text("a" + bad + "b");
        EXPECT_TRUE(text.starts_with("a\xEF\xBF\xBD") && text.ends_with('b')) << text;
        EXPECT_EQ(line_text(text), text);
    }
}

TEST(escaped_text, each_byte_that_is_not_utf8_is_replaced_by_one_character) {
    const std::string replaced = "\xEF\xBF\xBD";
    EXPECT_EQ(line_text("\xF0\x9F\x98z"), replaced + replaced + replaced + "z");
    EXPECT_EQ(line_text("\xC3"), replaced);
}

TEST(escaped_text, every_pair_of_bytes_makes_valid_documents) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            EXPECT_TRUE(plain_syntax::Xml::is_well_formed("<a>" + xml_text(bytes) + "</a>"));
        }
    }
}

TEST(number_format, is_the_same_in_every_locale) {
    const CommaLocale commas;
    ASSERT_TRUE(commas.holds_for_the_c_library());
    EXPECT_EQ(fixed_number(1234567.875, 2), "1234567.88");
    EXPECT_EQ(short_number(12.50, 3), "12.5");
    EXPECT_EQ(short_number(100.0, 0), "100");
    EXPECT_EQ(short_number(-0.0001, 2), "0");
    EXPECT_EQ(fixed_number(-0.04, 1), "0.0");
    EXPECT_EQ(fixed_number(-0.06, 1), "-0.1");
    EXPECT_EQ(short_number(1e300, 2).size(), 301U);
}

TEST(label_places, no_two_labels_overlap_and_none_leaves_the_bounds) {
    nmk_draw::LabelPlaces places({0, 0, 100, 50});
    places.take({0, 0, 20, 20});
    nmk_draw::LabelBox box;
    EXPECT_FALSE(places.place({{10, 10}}, 10, 10, box));
    EXPECT_TRUE(places.place({{10, 10}, {40, 10}}, 10, 10, box));
    EXPECT_EQ(box.left, 35.0);
    EXPECT_FALSE(places.place({{44, 12}}, 10, 10, box));
    EXPECT_TRUE(places.place({{95, 30}}, 10, 10, box));
}

TEST(label_places, moves_a_label_inside_the_bounds) {
    nmk_draw::LabelPlaces places({0, 0, 100, 50});
    nmk_draw::LabelBox box;
    EXPECT_TRUE(places.place({{97, 60}}, 10, 10, box));
    EXPECT_EQ(box.left, 90.0);
    EXPECT_EQ(box.top, 40.0);
    EXPECT_TRUE(places.place({{-50, 2}}, 10, 10, box));
    EXPECT_EQ(box.left, 0.0);
    EXPECT_EQ(box.top, 0.0);
    EXPECT_FALSE(places.place({{98, 48}}, 10, 10, box));  // taken
    EXPECT_FALSE(places.place({{50, 20}}, 101, 10, box));
    EXPECT_FALSE(places.place({{50, 20}}, 10, 51, box));
}

}  // namespace
