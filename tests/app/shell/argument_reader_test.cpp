// argument_reader: reads arguments as a table declares them.

#include "shell/argument_reader.h"

#include <gtest/gtest.h>

#include <ostream>

#include "shell/command.h"

namespace nmk_shell {
namespace {

enum class Fruit { apple, pear };

constexpr Choice<Fruit> fruits[] = {{"apple", Fruit::apple}, {"pear", Fruit::pear}};

struct Basket {
    std::string file, output;
    std::vector<std::string> words, labels;
    Fruit fruit = Fruit::apple;
    double weight = 1.0;
    int count = 1;
    bool json = false;
};

void declare(OptionTable& table, Basket& basket) {
    table.input_file("FILE", basket.file, "the basket");
    table
        .positional(
            "WORD",
            [&basket](const std::string& word) {
                basket.words.push_back(word);
                return Problem();
            },
            "words")
        .is_many = true;
    table.choice("--fruit", "NAME", basket.fruit, std::span(fruits), "the fruit");
    table.number("--weight", "KG", basket.weight, from_zero, "the weight");
    table.number("--count", "N", basket.count, whole_number(1, 9, "a whole number from 1 to 9"),
                 "how many");
    table.output_file("-o,--output", basket.output, "the file to write");
    table.repeated_option(
        "--label", "TEXT",
        [&basket](const std::string& text) {
            basket.labels.push_back(text);
            return Problem();
        },
        "a label");
    table.option("--json", basket.json, "print JSON");
    table.check([&basket]() -> Problem {
        return basket.json && basket.count > 1 ? "--json takes one fruit" : "";
    });
}

using Words = std::vector<std::string>;

Basket read(const Words& words) {
    const auto basket = read_options(declare, words);
    if (!basket) {
        ADD_FAILURE() << basket.error().message;
        return {};
    }
    return *basket;
}

TEST(argument_reader, reads_options_before_and_after_positional_arguments) {
    const Basket basket =
        read({"--fruit", "pear", "plate.drl", "--weight=2.5", "one", "-o", "out", "two", "--json"});
    EXPECT_EQ(basket.file, "plate.drl");
    EXPECT_EQ(basket.words, (Words{"one", "two"}));
    EXPECT_EQ(basket.fruit, Fruit::pear);
    EXPECT_EQ(basket.weight, 2.5);
    EXPECT_EQ(basket.output, "out");
    EXPECT_TRUE(basket.json);
}

TEST(argument_reader, a_negative_number_is_a_value_everywhere) {
    const Words numbers = {"-1", "-.5", "-inf", "-1e999", "-nan", "-0x", "-7z"};
    Words words = {"f"};
    words.insert(words.end(), numbers.begin(), numbers.end());
    EXPECT_EQ(read(words).words, numbers);
    EXPECT_EQ(read({"f", "--label", "-1", "--label=-.5", "--label", "-inf"}).labels,
              (Words{"-1", "-.5", "-inf"}));
}

TEST(argument_reader, keeps_values_that_the_parser_would_read_otherwise) {
    const Words odd = {"++", "[a,b]", "[]", "-", "", "{}", "%%", "/x", "a=b", "\x01", "a,b", "'q'"};
    Words words = {"f"};
    words.insert(words.end(), odd.begin(), odd.end());
    EXPECT_EQ(read(words).words, odd);
    for (const std::string& each : odd) {
        EXPECT_EQ(read({"f", "--label", each}).labels, Words{each});
        EXPECT_EQ(read({"f", "--label=" + each}).labels, Words{each});
    }
}

TEST(argument_reader, after_two_dashes_every_argument_is_positional) {
    EXPECT_EQ(read({"f", "--json", "--", "--json", "--nothing", "--", "-o"}).words,
              (Words{"--json", "--nothing", "--", "-o"}));
}

TEST(argument_reader, the_last_of_several_values_counts) {
    const Basket basket = read({"f", "--fruit", "apple", "--json", "--fruit=pear", "--json"});
    EXPECT_EQ(basket.fruit, Fruit::pear);
    EXPECT_EQ(read({"f", "--label", "a", "--label", "b"}).labels, (Words{"a", "b"}));
}

TEST(argument_reader, a_short_option_may_be_joined_with_its_value) {
    EXPECT_EQ(read({"f", "-oout.svg"}).output, "out.svg");
}

TEST(argument_reader, words_may_be_in_capital_letters) {
    EXPECT_EQ(read({"f", "--fruit", "PEAR"}).fruit, Fruit::pear);
}

struct BadArguments {
    const char* name;
    Words words;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const BadArguments& bad) { return out << bad.name; }

class argument_reader_error : public testing::TestWithParam<BadArguments> {};

TEST_P(argument_reader_error, is_reported_in_one_line) {
    const auto basket = read_options(declare, GetParam().words, "basket");
    ASSERT_FALSE(basket);
    EXPECT_EQ(basket.error().message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    arguments, argument_reader_error,
    testing::Values(
        BadArguments{"file_missing", {"--json"}, "expected FILE; see nmk help basket"},
        BadArguments{"file_empty", {""}, "FILE \"\": expected the name of a file"},
        BadArguments{"unknown_choice",
                     {"f", "--fruit", "peer"},
                     "--fruit \"peer\": expected apple or pear; did you mean pear?"},
        BadArguments{
            "choice_like_none", {"f", "--fruit=plum"}, "--fruit \"plum\": expected apple or pear"},
        BadArguments{"choice_empty", {"f", "--fruit="}, "--fruit \"\": expected apple or pear"},
        BadArguments{"number_word",
                     {"f", "--weight", "much"},
                     "--weight \"much\": expected a number from 0 up"},
        BadArguments{
            "number_low", {"f", "--weight", "-1"}, "--weight \"-1\": expected a number from 0 up"},
        BadArguments{"number_nan",
                     {"f", "--weight", "nan"},
                     "--weight \"nan\": expected a number from 0 up"},
        BadArguments{"number_infinite",
                     {"f", "--weight", "inf"},
                     "--weight \"inf\": expected a number from 0 up"},
        BadArguments{"number_not_whole",
                     {"f", "--count", "1.5"},
                     "--count \"1.5\": expected a whole number from 1 to 9"},
        BadArguments{"number_high",
                     {"f", "--count", "10"},
                     "--count \"10\": expected a whole number from 1 to 9"},
        BadArguments{"value_missing", {"f", "-o"}, "-o needs a value"},
        BadArguments{"switch_with_value", {"f", "--json=yes"}, "--json takes no value"},
        BadArguments{"switch_with_empty_value", {"f", "--json="}, "--json takes no value"},
        BadArguments{"unknown_option_before_other_problems",
                     {"f", "--fruti", "pear", "--weight", "x"},
                     "unknown option \"--fruti\" (did you mean --fruit?); see nmk help basket"},
        BadArguments{"unknown_option_with_value",
                     {"f", "--wait=3"},
                     "unknown option \"--wait\"; see nmk help basket"},
        BadArguments{
            "unknown_short_option", {"f", "-x"}, "unknown option \"-x\"; see nmk help basket"},
        BadArguments{"rule", {"f", "--json", "--count", "2"}, "--json takes one fruit"},
        BadArguments{"readable_name",
                     {"f", "--fruit", "caf\xC3\xA9\xE2\x80\xAE\x1B[2J"},
                     "--fruit \"caf\xC3\xA9\\xe2\\x80\\xae\\x1b[2J\": expected apple or pear"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(argument_reader, any_words_are_read_or_refused) {
    const Words pieces = {
        "f",   "-",   "--", "---", "-o",     "--output", "--output=", "--json",        "=", "\n",
        "-\n", "--!", "-!", "- ",  "--\x01", "[",        "-[a]",      "--label=[a,b]", ""};
    for (const std::string& a : pieces) {
        for (const std::string& b : pieces) {
            for (const std::string& c : pieces) {
                const auto basket = read_options(declare, {a, b, c});
                EXPECT_TRUE(basket || !basket.error().message.empty());
            }
        }
    }
}

struct Groups {
    std::vector<std::string> calls;
    std::string plain;
};

void declare_groups(OptionTable& table, Groups& groups) {
    for (const std::string name : {"--group", "--member", "--note"}) {
        table.ordered_option(
            name, "TEXT",
            [&groups, name](const std::string& text) {
                groups.calls.push_back(name + " " + text);
                return text == "bad" ? "expected a good one" : "";
            },
            "a part of a group");
    }
    table.option("--plain", "TEXT", text_setter(groups.plain), "of no group");
    table.check([&groups]() -> Problem { return groups.calls.empty() ? "no groups" : ""; });
}

TEST(argument_reader_ordered, sets_options_in_the_order_of_the_command_line) {
    const auto groups = read_options(
        declare_groups, {"--member", "0", "--group=a", "--member", "1", "--plain", "p", "--note",
                         "n", "--group", "b", "--member", "2", "--member", "-3"});
    ASSERT_TRUE(groups);
    EXPECT_EQ(groups->calls,
              (std::vector<std::string>{"--member 0", "--group a", "--member 1", "--note n",
                                        "--group b", "--member 2", "--member -3"}));
    EXPECT_EQ(groups->plain, "p");
}

TEST(argument_reader_ordered, reports_the_first_problem_and_missing_values) {
    const auto problem = [](const std::vector<std::string>& words) {
        const auto groups = read_options(declare_groups, words);
        return groups ? std::string() : groups.error().text();
    };
    EXPECT_EQ(problem({"--group", "a", "--note", "bad", "--member", "bad"}),
              "--note \"bad\": expected a good one");
    EXPECT_EQ(problem({"--group", "a", "--note"}), "--note needs a value");
    EXPECT_EQ(problem({"--plain", "p"}), "no groups");
}

}  // namespace
}  // namespace nmk_shell
