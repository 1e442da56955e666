#include <nmktoolbox/files/nmkCharTypes.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

#include <cctype>
#include <limits>

namespace {

using ClassTest = int (nmkCharTypes::*)(int) const;

constexpr ClassTest all_tests[] = {
    &nmkCharTypes::isalnum, &nmkCharTypes::isalpha, &nmkCharTypes::isblank,
    &nmkCharTypes::iscntrl, &nmkCharTypes::isdigit, &nmkCharTypes::isgraph,
    &nmkCharTypes::islower, &nmkCharTypes::isprint, &nmkCharTypes::ispunct,
    &nmkCharTypes::isspace, &nmkCharTypes::isupper, &nmkCharTypes::isxdigit};

constexpr int (*c_tests[])(int) = {std::isalnum, std::isalpha, std::isblank, std::iscntrl,
                                   std::isdigit, std::isgraph, std::islower, std::isprint,
                                   std::ispunct, std::isspace, std::isupper, std::isxdigit};

}  // namespace

TEST(nmkCharTypes, answers_as_the_c_library_does_for_ascii) {
    for (int c = 0; c < 128; ++c) {
        const nmkCharTypes types(utString(std::string(1, static_cast<char>(c))));
        for (std::size_t i = 0; i < std::size(all_tests); ++i) {
            EXPECT_EQ((types.*all_tests[i])(0), c_tests[i](c) != 0 ? 1 : 0) << c << ", test " << i;
        }
    }
}

TEST(nmkCharTypes, knows_the_letters_of_every_script) {
    const nmkCharTypes types(utString(std::string(a_umlaut) + std::string(capital_a_umlaut) +
                                      std::string(ideograph) + "\xD0\xB6\xCE\xA3\xC4\xB1\xC3\x9F"));
    // a umlaut, A umlaut, an ideograph, Cyrillic zhe, capital sigma, dotless i, sharp s
    const std::string lower = "1001011";
    const std::string upper = "0100100";
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(types.isalpha(i), 1) << i;
        EXPECT_EQ(types.isalnum(i), 1) << i;
        EXPECT_EQ(types.islower(i), lower[std::size_t(i)] - '0') << i;
        EXPECT_EQ(types.isupper(i), upper[std::size_t(i)] - '0') << i;
        EXPECT_EQ(types.isdigit(i), 0) << i;
    }
}

TEST(nmkCharTypes, takes_no_break_spaces_for_no_space) {
    const nmkCharTypes types(
        utString(std::string(ideographic_space) + std::string(no_break_space) + "\xE2\x80\xAF"));
    EXPECT_EQ(types.isspace(0), 1);
    EXPECT_EQ(types.isspace(1), 0);
    EXPECT_EQ(types.isspace(2), 0);
}

TEST(nmkCharTypes, counts_code_units_and_puts_surrogates_in_no_class) {
    const nmkCharTypes types(utString(std::string(smiley) + "x"));
    for (const ClassTest test : all_tests) {
        EXPECT_EQ((types.*test)(0), 0);
        EXPECT_EQ((types.*test)(1), 0);
    }
    EXPECT_EQ(types.isalpha(2), 1);
}

TEST(nmkCharTypes, answers_0_outside_the_text) {
    const nmkCharTypes types("x");
    const nmkCharTypes of_null{utString()};
    for (const int index :
         {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        for (const ClassTest test : all_tests) {
            EXPECT_EQ((types.*test)(index), 0) << index;
            EXPECT_EQ((of_null.*test)(index), 0) << index;
        }
    }
    EXPECT_EQ(of_null.isalpha(0), 0);
}
