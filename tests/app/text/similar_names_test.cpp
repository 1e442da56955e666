// similar_names: names similar to a mistyped one.

#include "text/similar_names.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using namespace nmk_text;

using Names = std::vector<std::string>;

const Names known = {"type", "tolerance", "svg", "csv", "across-tools", "rapid", "c"};

struct Mistyped {
    const char* name;
    const char* word;
    Names similar;
};

std::ostream& operator<<(std::ostream& out, const Mistyped& each) { return out << each.name; }

class similar_names_of : public testing::TestWithParam<Mistyped> {};

TEST_P(similar_names_of, a_word) {
    EXPECT_EQ(similar_names(GetParam().word, known), GetParam().similar);
}

INSTANTIATE_TEST_SUITE_P(words, similar_names_of,
                         testing::Values(Mistyped{"a_letter_is_missing", "typ", {"type"}},
                                         Mistyped{"two_letters_are_exchanged", "tpye", {"type"}},
                                         Mistyped{"capital_letters", "TYPE", {"type"}},
                                         Mistyped{"one_error_in_a_short_name", "svh", {"svg"}},
                                         Mistyped{"two_errors_in_a_short_name", "sxx", {}},
                                         Mistyped{"a_part", "across", {"across-tools"}},
                                         Mistyped{"nothing_similar", "fold", {}},
                                         Mistyped{"empty", "", {}}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(similar_names, the_most_similar_comes_first) {
    EXPECT_EQ(similar_names("bar", Names{"ba", "barn", "bar", "embargo"}),
              (Names{"bar", "ba", "barn", "embargo"}));
}

TEST(similar_names, five_at_most) {
    EXPECT_EQ(similar_names("abcd", Names{"abc1", "abc2", "abc3", "abc4", "abc5", "abc6"}).size(),
              5U);
}

TEST(similar_names, are_listed_as_a_question) {
    EXPECT_EQ(did_you_mean(Names{}), "");
    EXPECT_EQ(did_you_mean(Names{"a"}), "did you mean a?");
    EXPECT_EQ(did_you_mean(Names{"a", "b", "c"}), "did you mean a, b or c?");
}

}  // namespace
