// json_document: the layout of JSON documents, and numbers that read back exactly.

#include "text/json_document.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>

#include "app/text/plain_syntax.h"

namespace nmk_text {
namespace {

TEST(json_document, a_value_that_fits_is_on_one_line) {
    EXPECT_EQ(json_document({{"schema", 1}, {"start", {0.5, 2.0}}, {"notes", Json::array()}}),
              "{\"schema\": 1, \"start\": [0.5, 2], \"notes\": []}\n");
}

TEST(json_document, a_longer_value_has_a_line_for_each_member) {
    const std::string long_text(50, 'a');
    EXPECT_EQ(json_document({{"schema", 1}, {"rows", {{{"a", long_text}, {"b", 1}}, {{"c", 2}}}}}),
              "{\n  \"schema\": 1,\n  \"rows\": [\n    {\"a\": \"" + long_text +
                  "\", \"b\": 1},\n    {\"c\": 2}\n  ]\n}\n");
}

TEST(json_document, no_line_of_numbers_is_wider_than_80_columns) {
    Json rows = Json::array();
    for (int i = 0; i < 300; ++i) rows.push_back({{"point", {i / 7.0, -i / 3.0}}, {"text", "x"}});
    const std::string text = json_document({{"rows", rows}});
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find('\n', begin)) != text.npos; begin = end + 1) {
        EXPECT_LE(end - begin, 80U);
    }
    EXPECT_EQ(Json::parse(text)["rows"], rows);
}

TEST(json_document, numbers_have_the_digits_of_the_file) {
    for (const char* digits : {"0.7112", "2.20726", "4.11734", "1e+300", "-7.25", "12"}) {
        EXPECT_EQ(json_line(std::stod(digits)), digits);
    }
}

TEST(json_document, numbers_are_read_back_to_the_last_bit) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 20000; ++round) {
        double number = 0.0;
        const std::uint64_t bits = random();
        std::memcpy(&number, &bits, sizeof number);
        if (!std::isfinite(number)) continue;
        ASSERT_EQ(Json::parse(json_line(number)).get<double>(), number) << std::hexfloat << number;
    }
}

TEST(json_document, a_number_that_is_not_finite_is_null_and_a_negative_zero_is_zero) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(json_line({infinity, -infinity, std::nan(""), -0.0}), "[null, null, null, 0]");
}

TEST(json_document, texts_and_names_of_any_bytes_make_valid_documents) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            Json object = Json::object();
            object[bytes] = bytes;
            EXPECT_TRUE(plain_syntax::Json::is_valid(json_document(object)));
        }
    }
}

TEST(json_document, an_opening_ends_with_the_bracket_of_its_array) {
    EXPECT_EQ(json_opening({{"schema", 1}}, "rows"), "{\"schema\": 1, \"rows\": [");
}

}  // namespace
}  // namespace nmk_text
