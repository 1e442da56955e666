// nmk registry: its actions as a person uses them, and what it refuses.

#include <nmktoolbox/runtime/nmkRegistry.h>

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "app/shell/command_runner.h"
#include "app/shell/standard_input.h"
#include "holding_child.h"
#include "registry_scratch.h"

namespace {

using nmk_shell::Printed;

Printed registry(std::vector<std::string> words) {
    words.insert(words.begin(), "registry");
    return nmk_shell::run(words);
}

void expect_done(const Printed& printed, const std::string& out) {
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out, out);
    EXPECT_EQ(printed.err, "");
}

void expect_missing(const Printed& printed, const std::string& words) {
    EXPECT_EQ(printed.code, 1) << printed.err;
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "nmk registry: " + words + "\n");
}

class registry_command : public testing::Test {
  protected:
    RegistryScratch scratch;
};

struct RefusedCase {
    const char* name;
    std::vector<std::string> words;
    std::string message;
};

std::ostream& operator<<(std::ostream& stream, const RefusedCase& each) {
    return stream << each.name;
}

class registry_command_refused : public testing::TestWithParam<RefusedCase> {};

struct ValueCase {
    const char* name;
    std::string type;
    std::vector<std::string> words;
    std::string bytes;
    std::string printed;  // by get
};

std::ostream& operator<<(std::ostream& stream, const ValueCase& each) {
    return stream << each.name;
}

class registry_command_value : public testing::TestWithParam<ValueCase> {};

}  // namespace

TEST_P(registry_command_value, is_set_and_printed) {
    const RegistryScratch scratch;
    std::vector<std::string> words = {"set", "HKCU/a", "v", "--type", GetParam().type, "--"};
    words.insert(words.end(), GetParam().words.begin(), GetParam().words.end());
    expect_done(registry(words), "");
    EXPECT_EQ(text_of(HKEY_CURRENT_USER, "a", "v"), GetParam().bytes);
    expect_done(registry({"get", "HKCU/a", "v"}), GetParam().printed);
}

INSTANTIATE_TEST_SUITE_P(
    each, registry_command_value,
    testing::Values(
        ValueCase{"text", "REG_SZ", {"two words"}, std::string("two words\0", 10), "two words\n"},
        ValueCase{"empty_text", "REG_SZ", {""}, std::string(1, '\0'), "\n"},
        ValueCase{
            "expanded_text", "reg_expand_sz", {"%HOME%"}, std::string("%HOME%\0", 7), "%HOME%\n"},
        ValueCase{"number", "REG_DWORD", {"258"}, std::string("\x02\x01\0\0", 4), "258\n"},
        ValueCase{"negative_number", "REG_DWORD", {"-1"}, "\xFF\xFF\xFF\xFF", "4294967295\n"},
        ValueCase{"least_number",
                  "REG_DWORD",
                  {"-2147483648"},
                  std::string("\0\0\0\x80", 4),
                  "2147483648\n"},
        ValueCase{
            "hexadecimal_number", "REG_DWORD", {"0xFFFFFFFF"}, "\xFF\xFF\xFF\xFF", "4294967295\n"},
        ValueCase{"number_of_64_bits",
                  "REG_QWORD",
                  {"18446744073709551615"},
                  std::string(8, '\xFF'),
                  "18446744073709551615\n"},
        ValueCase{"texts", "REG_MULTI_SZ", {"a", "b c"}, std::string("a\0b c\0\0", 7), "a\nb c\n"},
        ValueCase{"no_texts", "REG_MULTI_SZ", {}, std::string(1, '\0'), ""},
        ValueCase{"bytes", "REG_BINARY", {"00fF"}, std::string("\0\xFF", 2), "00ff\n"},
        ValueCase{"no_bytes", "REG_NONE", {""}, "", "\n"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_P(registry_command_refused, prints_one_line_and_exits_with_2) {
    const RegistryScratch scratch;
    nmk_shell::expect_refused(registry(GetParam().words), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    each, registry_command_refused,
    testing::Values(
        RefusedCase{"no_action", {}, "ACTION"}, RefusedCase{"an_unknown_action", {"show"}, "show"},
        RefusedCase{"a_key_without_a_root", {"list", "Software"}, "begins with HKCU"},
        RefusedCase{"an_empty_name", {"list", "HKCU//a"}, "names of keys that are not empty"},
        RefusedCase{"a_backslash", {"list", "HKCU/a\\b"}, "without a backslash"},
        RefusedCase{"a_bad_escape", {"list", "HKCU/%2"}, "hexadecimal digits"},
        RefusedCase{"a_nul_in_a_name", {"list", "HKCU/%00"}, "hexadecimal digits"},
        RefusedCase{"too_many_words", {"get", "HKCU", "a", "b"}, "get KEY [NAME]"},
        RefusedCase{"set_without_a_value", {"set", "HKCU/a", "v"}, "one VALUE; found 0"},
        RefusedCase{"set_with_two_values", {"set", "HKCU/a", "v", "x", "y"}, "one VALUE; found 2"},
        RefusedCase{"a_number_that_is_none",
                    {"set", "HKCU/a", "v", "1x", "--type", "REG_DWORD"},
                    "whole number of 32 bits"},
        RefusedCase{"a_number_that_is_too_large",
                    {"set", "HKCU/a", "v", "4294967296", "--type", "REG_DWORD"},
                    "whole number of 32 bits"},
        RefusedCase{"a_number_that_is_too_small",
                    {"set", "HKCU/a", "v", "-2147483649", "--type", "REG_DWORD"},
                    "whole number of 32 bits"},
        RefusedCase{"half_a_byte",
                    {"set", "HKCU/a", "v", "123", "--type", "REG_BINARY"},
                    "pairs of hexadecimal digits"},
        RefusedCase{"an_empty_text_of_a_list",
                    {"set", "HKCU/a", "v", "a", "", "--type", "REG_MULTI_SZ"},
                    "texts that are not empty"},
        RefusedCase{"an_unknown_type", {"set", "HKCU/a", "v", "x", "--type", "REG_X"}, "REG_SZ"},
        RefusedCase{"a_negative_wait", {"list", "--wait", "-1"}, "0 to 86400"},
        RefusedCase{"json_of_a_change", {"set", "HKCU/a", "v", "x", "--json"}, "list and get"},
        RefusedCase{"json_of_all_roots", {"list", "--json"}, "--json needs a KEY"},
        RefusedCase{"an_output_of_list", {"list", "-o", "x"}, "--output goes with export"},
        RefusedCase{"a_new_key_of_the_machine",
                    {"set", "HKLM/new", "v", "x"},
                    "no new keys directly below HKLM"},
        RefusedCase{
            "the_deletion_of_a_root", {"delete", "HKCU", "--recursive"}, "belongs to the system"},
        RefusedCase{
            "the_deletion_of_the_software", {"delete", "HKLM/Software"}, "belongs to the system"},
        RefusedCase{
            "a_missing_file", {"import", "/nowhere/settings.json"}, "/nowhere/settings.json"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(registry_command, lists_the_four_roots) {
    expect_done(registry({"list"}), "HKCR/\nHKCU/\nHKLM/\n└── Software/\nHKU/\n└── .Default/\n");
}

TEST_F(registry_command, lists_values_before_keys_in_the_order_of_their_names) {
    put_text(HKEY_CURRENT_USER, "b\\c", "v", std::string("x\0", 2));
    put_text(HKEY_CURRENT_USER, "", "b", "not a text");
    put_text(HKEY_CURRENT_USER, "", "", std::string("\x1B[31m\0", 6));
    expect_done(registry({"list", "hkcu"}),
                "HKCU/\n"
                "├── (default) = \"\\x1b[31m\"  REG_SZ\n"
                "├── b = 6e6f7420612074657874  REG_SZ\n"
                "└── b/\n"
                "    └── c/\n"
                "        └── v = \"x\"  REG_SZ\n");
    EXPECT_EQ(registry({"list", "HKEY_CURRENT_USER/B"}).out,
              "HKCU/B/\n└── c/\n    └── v = \"x\"  REG_SZ\n");
}

TEST_F(registry_command, a_slash_in_a_name_is_written_as_an_escape) {
    expect_done(registry({"set", "HKCU/a%2Fb%25/c", "v/w", "x"}), "");
    EXPECT_TRUE(has_key(HKEY_CURRENT_USER, "a/b%\\c"));
    EXPECT_EQ(registry({"list", "HKCU"}).out,
              "HKCU/\n└── a%2Fb%25/\n    └── c/\n        └── v/w = \"x\"  REG_SZ\n");
}

TEST_F(registry_command, reports_what_does_not_exist) {
    put_text(HKEY_CURRENT_USER, "a", "v", "x");
    expect_missing(registry({"list", "HKCU/b"}), "HKCU/b: does not exist");
    expect_missing(registry({"get", "HKCU/a", "w"}), "HKCU/a: the value \"w\": does not exist");
    expect_missing(registry({"get", "HKCU/a"}), "HKCU/a: its default value: does not exist");
    expect_missing(registry({"delete", "HKCU/b"}), "HKCU/b: does not exist");
    expect_missing(registry({"delete", "HKCU/a", "w"}), "HKCU/a: the value \"w\": does not exist");
    expect_missing(registry({"copy", "HKCU/b", "HKCU/c"}), "HKCU/b: does not exist");
    EXPECT_FALSE(has_key(HKEY_CURRENT_USER, "c"));
}

TEST_F(registry_command, deletes_nothing_with_subkeys_unless_recursive) {
    put_text(HKEY_CURRENT_USER, "a\\b", "v", "x");
    nmk_shell::expect_refused(registry({"delete", "HKCU/a"}),
                              "HKCU/a: has subkeys; --recursive deletes it");
    EXPECT_TRUE(has_key(HKEY_CURRENT_USER, "a\\b"));
    expect_done(registry({"delete", "HKCU/a/b"}), "");
    expect_done(registry({"delete", "HKCU/a"}), "");
    put_text(HKEY_CURRENT_USER, "a\\b", "v", "x");
    expect_done(registry({"delete", "HKCU/a", "--recursive"}), "");
    EXPECT_FALSE(has_key(HKEY_CURRENT_USER, "a"));
}

TEST_F(registry_command, deletes_a_value) {
    put_text(HKEY_CURRENT_USER, "a", "v", "x");
    expect_done(registry({"delete", "HKCU/a", "V"}), "");
    EXPECT_EQ(text_of(HKEY_CURRENT_USER, "a", "v"), "(result 2)");
}

TEST_F(registry_command, copies_a_tree_and_refuses_one_into_itself) {
    put_text(HKEY_CURRENT_USER, "a\\b", "v", "x");
    expect_done(registry({"copy", "HKCU/a", "HKCR/c"}), "");
    EXPECT_EQ(text_of(HKEY_CLASSES_ROOT, "c\\b", "v"), "x");
    nmk_shell::expect_refused(registry({"copy", "HKCU/a", "HKCU/a/b/c"}),
                              "no copy of a key into what is below it");
}

TEST_F(registry_command, an_export_is_imported_to_the_same_tree) {
    put_text(HKEY_CURRENT_USER, "a", "", std::string("text\0", 5));
    put_text(HKEY_CURRENT_USER, "a", "not a text", "x");
    put_text(HKEY_CURRENT_USER, "a\\\xFF\\c/d", "\xFE", "\xFD");
    const std::string file = scratch.in("export.json");
    expect_done(registry({"export", "HKCU/a", "-o", file}), "Wrote " + file + ".\n");
    const std::string before = registry({"list", "HKCU/a"}).out;
    const std::string json = registry({"export", "HKCU/a"}).out;
    EXPECT_EQ(json, nmk_shell::text_of(file));
    EXPECT_EQ(json, registry({"list", "HKCU/a", "--json"}).out);
    expect_done(registry({"delete", "HKCU/a", "--recursive"}), "");
    expect_done(registry({"import", file}), "Wrote HKCU/a.\n");
    EXPECT_EQ(registry({"list", "HKCU/a"}).out, before);
    expect_done(registry({"import", file, "HKCR/a", "--quiet"}), "");
    EXPECT_EQ(text_of(HKEY_CLASSES_ROOT, "a\\\xFF\\c/d", "\xFE"), "\xFD");
    EXPECT_EQ(registry({"export", "HKCU/a"}).out, json);
    EXPECT_EQ(registry({"list", "HKCU"}).out.find("import"), std::string::npos)
        << "what an import needs meanwhile is deleted";
}

TEST_F(registry_command, the_sample_is_exported_as_it_is) {
    const std::string sample = NMK_SOURCE_DIR "/samples/settings.json";
    EXPECT_EQ(registry({"import", sample}).code, 0);
    expect_done(registry({"export", "HKCU/Software/Norvex"}), nmk_shell::text_of(sample));
}

TEST_F(registry_command, an_import_reads_standard_input) {
    const std::string sample = NMK_SOURCE_DIR "/samples/settings.json";
    EXPECT_EQ(registry({"import", sample, "HKCU/a"}).code, 0);
    const std::string expected = registry({"export", "HKCU/a"}).out;
    EXPECT_EQ(registry({"delete", "HKCU/a", "--recursive"}).code, 0);
    {
        const StandardInput standard_input(nmk_shell::text_of(sample));
        expect_done(registry({"import", "-", "HKCU/a"}), "Wrote HKCU/a.\n");
    }
    expect_done(registry({"export", "HKCU/a"}), expected);
    const StandardInput standard_input("{");
    nmk_shell::expect_refused(registry({"import", "-"}), "standard input:");
}

TEST_F(registry_command, an_import_keeps_what_it_does_not_replace) {
    put_text(HKEY_CURRENT_USER, "a", "old", "1");
    const std::string file =
        scratch.file("a.json",
                     R"({"schema": 1, "format": "nmk registry", "path": "HKCU/A", "keys": [],
            "values": [{"name": "new", "type": 77, "bytes": "32"}]})");
    expect_done(registry({"import", file}), "Wrote HKCU/A.\n");
    EXPECT_EQ(text_of(HKEY_CURRENT_USER, "a", "old"), "1");
    EXPECT_EQ(text_of(HKEY_CURRENT_USER, "a", "new"), "2");
}

TEST_F(registry_command, an_import_that_fails_changes_nothing) {
    put_text(HKEY_CURRENT_USER, "a", "v", "before");
    const std::string long_name(256, 'x');
    const std::string file = scratch.file(
        "a.json", R"({"schema": 1, "format": "nmk registry", "path": "HKCU/a", "values": [
            {"name": "v", "type": "REG_BINARY", "bytes": "00"}],
            "keys": [{"name": ")" +
                      long_name + R"(", "values": [], "keys": []}]})");
    nmk_shell::expect_refused(registry({"import", file}), "beyond the limits of the registry");
    EXPECT_EQ(text_of(HKEY_CURRENT_USER, "a", "v"), "before");
    EXPECT_EQ(registry({"list", "HKCU"}).out.find("import"), std::string::npos);
}

TEST_F(registry_command, quiet_prints_no_text_and_get_prints_json) {
    put_text(HKEY_CURRENT_USER, "a", "v", std::string("x\0", 2));
    expect_done(registry({"list", "HKCU/a", "--quiet"}), "");
    expect_done(registry({"get", "HKCU/a", "v", "--quiet"}), "");
    expect_done(registry({"get", "HKCU/a", "v", "--quiet", "--json"}),
                "{\n  \"schema\": 1,\n  \"format\": \"nmk registry\",\n  \"path\": \"HKCU/a\",\n"
                "  \"values\": [{\"name\": \"v\", \"type\": \"REG_SZ\", \"text\": \"x\"}],\n"
                "  \"keys\": []\n}\n");
}

TEST_F(registry_command, reports_another_session_that_holds_the_lock) {
    const HoldingChild holder([] { new nmkRegistry; });
    expect_missing(registry({"list", "--wait", "0.05"}),
                   "another session holds the lock of the registry; waited 0.05 s, --wait SECONDS "
                   "waits longer");
}

TEST_F(registry_command, waits_as_long_as_asked_for_another_session) {
    HoldingChild holder([] { new nmkRegistry; });
    std::thread ending([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        holder.kill();
    });
    const Printed printed = registry({"list", "--wait", "60"});
    ending.join();
    EXPECT_EQ(printed.code, 0) << printed.err;
}

TEST_F(registry_command, continues_after_a_session_that_was_killed) {
    HoldingChild([] { new nmkRegistry; }).kill();
    EXPECT_EQ(registry({"list", "--wait", "0"}).code, 0);
}

TEST_F(registry_command, reports_a_damaged_registry_and_where_it_is_kept) {
    put_text(HKEY_CURRENT_USER, "a", "v", "x");
    winapi::set_configuration_directory(scratch.in("damaged").c_str());
    ASSERT_TRUE(std::filesystem::create_directories(scratch.in("damaged/registry")));
    scratch.file("damaged/registry/store.sqlite", "not a registry");
    nmk_shell::expect_refused(registry({"list"}), "store.sqlite: damaged; kept in " +
                                                      scratch.in("damaged/registry.damaged.1"));
    EXPECT_EQ(registry({"list"}).code, 0);
}
