#include <nmktoolbox/files/nmktrim_trailing_zeros.h>

#include <gtest/gtest.h>

namespace {

struct Trimmed {
    const char* name;
    const char* before;
    const char* after;
};

const Trimmed trimmed_cases[] = {
    {"zeros_after_the_point", "1.500", "1.5"},
    {"the_point_goes_too", "2.000", "2"},
    {"the_comma_goes_too", "2,000", "2"},
    {"only_the_point", "7.", "7"},
    {"no_zeros", "1.25", "1.25"},
    {"zero", "0.0", "0"},
    {"one_zero", "0", "0"},
    {"one_point", ".", ""},
    {"the_byte_at_1_is_not_taken_as_a_zero", ".0", ".0"},
    {"two_bytes_stay", "10", "10"},
    {"empty", "", ""},
};

}  // namespace

TEST(nmktrim_trailing_zeros, takes_zeros_and_then_the_point) {
    for (const Trimmed& each : trimmed_cases) {
        utString text(each.before);
        nmktrim_trailing_zeros(text);
        EXPECT_EQ(text.view(), each.after) << each.name;
        EXPECT_FALSE(text.is_null()) << each.name;
    }
}

TEST(nmktrim_trailing_zeros, leaves_the_null_string_null) {
    utString text;
    nmktrim_trailing_zeros(text);
    EXPECT_TRUE(text.is_null());
}

TEST(nmktrim_trailing_zeros, takes_the_zeros_of_a_whole_number_down_to_two_digits) {
    for (const char* whole : {"100", "1000", "100000"}) {
        utString text(whole);
        nmktrim_trailing_zeros(text);
        EXPECT_EQ(text.view(), "10") << whole;
    }
}
