// The walk along the bytes must agree with the conversion about every code unit.
#include "files/text_samples.h"

#include <nmktoolbox/files/nmkMultiByteToWideChar.h>
#include <nmktoolbox/files/nmksubstring.h>

#include <gtest/gtest.h>

namespace {

constexpr unsigned seed = 20260728;

int length_of(const utString& text) {
    return static_cast<int>(nmkMultiByteToWideChar::length(text));
}

}  // namespace

TEST(wide_text, cuts_at_the_code_units_of_the_conversion_for_any_bytes) {
    std::mt19937_64 draw(seed);
    for (int round = 0; round < 20000; ++round) {
        const utString text(random_bytes(draw, 12));
        const int length = length_of(text);
        const int middle = length == 0 ? 0 : static_cast<int>(draw() % unsigned(length + 1));
        const std::wstring wide = nmkMultiByteToWideChar::convert(text);
        const bool cuts_a_pair = middle < length && middle > 0 &&
                                 wide[std::size_t(middle)] >= 0xDC00 &&
                                 wide[std::size_t(middle)] <= 0xDFFF;
        const utString front = nmksubstring(text, 0, middle);
        const utString back = nmksubstring(text, middle, length);
        ASSERT_EQ(length_of(front), middle) << "seed " << seed << ", round " << round;
        ASSERT_EQ(length_of(back), length - middle) << "seed " << seed << ", round " << round;
        if (!cuts_a_pair) {
            ASSERT_EQ((front + back).view(), text.view()) << "seed " << seed << ", round " << round;
        }
    }
}

TEST(wide_text, takes_every_byte_of_the_western_code_page_for_a_character) {
    const ScopedCodePage western(ap_code_page_western);
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    const utString text(all);
    ASSERT_EQ(length_of(text), 256);
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(nmksubstring(text, i, 1).view(), all.substr(std::size_t(i), 1)) << i;
    }
}
