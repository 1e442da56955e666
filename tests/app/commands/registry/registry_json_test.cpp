// The JSON of an export: read back to the same tree, refused where it is wrong.

#include "commands/registry/registry_json.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace nmk_registry {
namespace {

const std::string head = R"("schema": 1, "format": "nmk registry", "path": "HKCU/a")";

// A document whose values are this text.
std::string with_values(const std::string& values) {
    return "{" + head + R"(, "keys": [], "values": [)" + values + "]}";
}

std::string refused(const std::string& text) {
    const auto document = read_document("a.json", text);
    return document ? "(read)" : document.error().text();
}

Value random_value(std::mt19937& random) {
    constexpr DWORD types[] = {REG_SZ,     REG_EXPAND_SZ, REG_DWORD, REG_QWORD, REG_MULTI_SZ,
                               REG_BINARY, REG_NONE,      77,        0xFFFFFFFF};
    Value value;
    value.type = types[random() % std::size(types)];
    for (auto n = random() % 6; n > 0; --n) {
        value.name += static_cast<char>(1 + random() % 255);
    }
    for (auto n = random() % 10; n > 0; --n) {
        value.bytes += random() % 3 == 0 ? '\0' : static_cast<char>(random() % 128);
    }
    return value;
}

Key random_key(std::mt19937& random, int levels) {
    Key key;
    for (auto n = random() % 4; n > 0; --n) key.values.push_back(random_value(random));
    for (auto n = levels == 0 ? 0 : random() % 3; n > 0; --n) {
        key.keys.push_back(random_key(random, levels - 1));
        key.keys.back().name = "k" + std::to_string(n);
    }
    return key;
}

struct RefusedCase {
    const char* name;
    std::string text;
    std::string message;
};

std::ostream& operator<<(std::ostream& stream, const RefusedCase& each) {
    return stream << each.name;
}

class registry_json_refused : public testing::TestWithParam<RefusedCase> {};

TEST_P(registry_json_refused, names_the_place_and_what_was_expected) {
    EXPECT_EQ(refused(GetParam().text), "a.json" + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    each, registry_json_refused,
    testing::Values(
        RefusedCase{"an_empty_file", "",
                    ":1: not a JSON document; expected an export of nmk registry"},
        RefusedCase{"a_line_that_is_wrong", "{\n\"a\": x}",
                    ":2: not a JSON document; expected an export of nmk registry"},
        RefusedCase{"another_document", "{}",
                    ": expected an export of nmk registry, with \"format\": \"nmk registry\""},
        RefusedCase{"an_array", "[]",
                    ": expected an export of nmk registry, with \"format\": \"nmk registry\""},
        RefusedCase{"another_schema", R"({"schema": 2, "format": "nmk registry", "path": "HKCU"})",
                    ": schema: expected 1"},
        RefusedCase{"no_values", "{" + head + "}",
                    ": expected an object with the member \"values\""},
        RefusedCase{"a_value_without_a_name", with_values("{}"),
                    ": values[0]: expected an object with the member \"name\""},
        RefusedCase{"a_value_that_is_a_number", with_values("1"),
                    ": values[0]: expected an object with the member \"name\""},
        RefusedCase{"a_name_that_is_a_number", with_values(R"({"name": 1})"),
                    ": values[0].name: expected a text"},
        RefusedCase{"a_name_with_a_nul", with_values(R"({"name": "a\u0000b"})"),
                    ": values[0].name: expected a text without U+0000; \"bytes\" may have any"},
        RefusedCase{"an_unknown_type", with_values(R"({"name": "", "type": "REG_X"})"),
                    ": values[0].type: expected a whole number from 0 to 4294967295"},
        RefusedCase{"a_text_without_one", with_values(R"({"name": "", "type": "REG_SZ"})"),
                    ": values[0]: expected an object with the member \"text\""},
        RefusedCase{"a_negative_number",
                    with_values(R"({"name": "", "type": "REG_DWORD", "number": -1})"),
                    ": values[0].number: expected a whole number from 0 to 4294967295"},
        RefusedCase{"a_number_that_is_too_large",
                    with_values(R"({"name": "", "type": "REG_DWORD", "number": 4294967296})"),
                    ": values[0].number: expected a whole number from 0 to 4294967295"},
        RefusedCase{"a_number_beyond_all", with_values(R"({"name": 1e999})"),
                    ": a number is too large; expected an export of nmk registry"},
        RefusedCase{"an_empty_text_of_a_list",
                    with_values(R"({"name": "", "type": "REG_MULTI_SZ", "texts": [""]})"),
                    ": values[0].texts[0]: expected a text that is not empty"},
        RefusedCase{"half_a_byte",
                    with_values(R"({"name": "", "type": "REG_BINARY", "bytes": "123"})"),
                    ": values[0].bytes: expected pairs of hexadecimal digits"},
        RefusedCase{"a_key_without_a_name",
                    "{" + head + R"(, "values": [], "keys": [{"name": ""}]})",
                    ": keys[0]: expected a name that is not empty and has no backslash"},
        RefusedCase{"a_key_with_a_backslash",
                    "{" + head + R"(, "values": [], "keys": [{"name": "a\\b"}]})",
                    ": keys[0]: expected a name that is not empty and has no backslash"},
        RefusedCase{"deep_nesting", std::string(100000, '['),
                    ": nested too deep; expected at most 512 levels of keys"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(registry_json, random_trees_are_read_back_the_same) {
    std::mt19937 random(20261122);
    for (int i = 0; i < 300; ++i) {
        const Document document{"HKCU/a", random_key(random, 3)};
        const std::string json = document_json(document);
        const auto read = read_document("a.json", json);
        ASSERT_TRUE(read) << read.error().text() << json;
        EXPECT_TRUE(read->tree == document.tree) << json;
        EXPECT_EQ(read->path, "HKCU/a");
    }
}

TEST(registry_json, every_prefix_of_a_document_is_refused) {
    std::mt19937 random(1);
    const std::string json = document_json({"HKCU/a", random_key(random, 2)});
    const std::size_t end = json.rfind('}');
    for (std::size_t length = 0; length <= end; ++length) {
        const std::vector<char> exact(json.begin(),
                                      json.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(read_document("a.json", {exact.data(), exact.size()})) << length;
    }
}

TEST(registry_json, as_deep_as_the_registry_is_read) {
    std::string text = "{" + head + R"(, "values": [], "keys": [)";
    for (int level = 0; level < 512; ++level) text += R"({"name": "k", "values": [], "keys": [)";
    for (int level = 0; level < 512; ++level) text += "]}";
    EXPECT_EQ(refused(text + "]}"), "(read)");
}

}  // namespace
}  // namespace nmk_registry
