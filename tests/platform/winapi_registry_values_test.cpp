// Setting, reading, listing and deleting values.
#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "platform/winapi_fixtures.h"
#include "registry_scratch.h"

namespace {

// A key of a registry of its own.
class RegistryValues : public testing::Test {
  protected:
    void SetUp() override { key = created_key(HKEY_CURRENT_USER, "Software\\a key"); }
    void TearDown() override { EXPECT_EQ(RegCloseKey(key), 0); }

    HKEY with_rights(REGSAM rights) const {
        HKEY opened = nullptr;
        EXPECT_EQ(RegOpenKeyExA(key, "", 0, rights, &opened), 0);
        return opened;
    }

    RegistryScratch scratch;
    HKEY key = nullptr;
};

struct NameCase {
    const char* name;
    std::string value;
    LSTATUS result;
};

std::ostream& operator<<(std::ostream& stream, const NameCase& each) { return stream << each.name; }

class RegSetValueExA_name : public RegistryValues, public testing::WithParamInterface<NameCase> {};

}  // namespace

TEST_P(RegSetValueExA_name, is_kept_or_refused) {
    EXPECT_EQ(set_text(key, GetParam().value.c_str(), "x"), GetParam().result);
    EXPECT_EQ(text_of(key, GetParam().value.c_str()), GetParam().result == 0 ? "x" : "(result 2)");
}

INSTANTIATE_TEST_SUITE_P(
    each, RegSetValueExA_name,
    testing::Values(NameCase{"of_letters", "name", 0}, NameCase{"that_is_empty", "", 0},
                    NameCase{"with_backslashes", "a\\b\\", 0}, NameCase{"with_slashes", "../a/", 0},
                    NameCase{"with_quotes", "a'b\"c;--", 0}, NameCase{"with_line_ends", "\r\n", 0},
                    NameCase{"that_is_not_valid_text", "\xFF\x80", 0},
                    NameCase{"of_16383_letters", std::string(16383, 'x'), 0},
                    NameCase{"of_16384_letters", std::string(16384, 'x'), 87}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(RegistryValues, names_ignore_the_case_of_ascii_letters_and_keep_the_first) {
    EXPECT_EQ(set_text(key, "MiXed", "1"), 0);
    EXPECT_EQ(set_text(key, "mIxED", "2"), 0);
    EXPECT_EQ(text_of(key, "MIXED"), "2");
    char name[10];
    DWORD size = sizeof name;
    EXPECT_EQ(RegEnumValueA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_STREQ(name, "MiXed");
    size = sizeof name;
    EXPECT_EQ(RegEnumValueA(key, 1, name, &size, nullptr, nullptr, nullptr, nullptr), 259);
}

TEST_F(RegistryValues, a_null_name_is_that_of_the_default_value) {
    EXPECT_EQ(set_text(key, nullptr, "x"), 0);
    EXPECT_EQ(text_of(key, ""), "x");
    EXPECT_EQ(RegDeleteValueA(key, nullptr), 0);
    EXPECT_EQ(text_of(key, nullptr), "(result 2)");
}

TEST_F(RegistryValues, setting_replaces_type_and_data) {
    EXPECT_EQ(set_text(key, "v", "a long text"), 0);
    const DWORD number = 42;
    EXPECT_EQ(RegSetValueExA(key, "v", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), 4), 0);
    DWORD type = 0;
    DWORD read = 0;
    DWORD size = sizeof read;
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, &type, reinterpret_cast<BYTE*>(&read), &size), 0);
    EXPECT_EQ(type, REG_DWORD);
    EXPECT_EQ(read, 42u);
    EXPECT_EQ(size, 4u);
}

TEST_F(RegistryValues, every_type_number_is_kept) {
    for (const DWORD type : {REG_NONE, REG_BINARY, REG_QWORD, DWORD{12345}, DWORD{0xFFFFFFFF}}) {
        EXPECT_EQ(set_text(key, "v", "x", type), 0);
        DWORD read = 0;
        EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, &read, nullptr, nullptr), 0);
        EXPECT_EQ(read, type);
    }
}

TEST_F(RegistryValues, null_data_is_taken_for_no_bytes_only) {
    EXPECT_EQ(RegSetValueExA(key, "v", 0, REG_SZ, nullptr, 1), 998);
    EXPECT_EQ(text_of(key, "v"), "(result 2)");
    EXPECT_EQ(RegSetValueExA(key, "v", 0, REG_SZ, nullptr, 0), 0);
    EXPECT_EQ(text_of(key, "v"), "");
}

TEST_F(RegistryValues, a_size_that_is_too_small_is_reported_with_the_size_needed) {
    EXPECT_EQ(set_text(key, "v", std::string("text", 5)), 0);
    BYTE data[5] = {'?', '?', '?', '?', '?'};
    DWORD size = 4;
    DWORD type = 0;
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, &type, data, &size), 234);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(data[0], '?');
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, data, &size), 0);
    EXPECT_EQ(std::memcmp(data, "text", 5), 0);
    size = 0;
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, &size), 0);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, data, nullptr), 87);
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(RegistryValues, a_missing_value_leaves_the_callers_variables_alone) {
    DWORD type = 77;
    DWORD size = 3;
    BYTE data[3] = {'a', 'b', 'c'};
    EXPECT_EQ(RegQueryValueExA(key, "missing", nullptr, &type, data, &size), 2);
    EXPECT_EQ(type, 77u);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(data[0], 'a');
}

TEST_F(RegistryValues, a_text_without_its_nul_comes_back_without_one) {
    EXPECT_EQ(set_text(key, "v", "abc"), 0);
    EXPECT_EQ(text_of(key, "v"), "abc");
}

TEST_F(RegistryValues, a_handle_reads_and_writes_as_its_rights_say) {
    EXPECT_EQ(set_text(key, "v", "x"), 0);
    const HKEY reading = with_rights(KEY_QUERY_VALUE);
    const HKEY writing = with_rights(KEY_SET_VALUE);
    EXPECT_EQ(set_text(reading, "v", "y"), 5);
    EXPECT_EQ(RegDeleteValueA(reading, "v"), 5);
    EXPECT_EQ(text_of(reading, "v"), "x");
    EXPECT_EQ(text_of(writing, "v"), "(result 5)");
    char name[10];
    DWORD size = sizeof name;
    EXPECT_EQ(RegEnumValueA(writing, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 5);
    EXPECT_EQ(set_text(writing, "v", "z"), 0);
    EXPECT_EQ(text_of(reading, "v"), "z");
    EXPECT_EQ(RegCloseKey(reading), 0);
    EXPECT_EQ(RegCloseKey(writing), 0);
}

TEST_F(RegistryValues, generic_rights_are_those_of_keys) {
    EXPECT_EQ(set_text(key, "v", "x"), 0);
    const HKEY reading = with_rights(0x80000000u);
    EXPECT_EQ(text_of(reading, "v"), "x");
    EXPECT_EQ(set_text(reading, "v", "y"), 5);
    const HKEY all = with_rights(0x02000000u);
    EXPECT_EQ(set_text(all, "v", "y"), 0);
    EXPECT_EQ(RegCloseKey(reading), 0);
    EXPECT_EQ(RegCloseKey(all), 0);
}

TEST_F(RegistryValues, deleting_a_missing_value_returns_2) {
    EXPECT_EQ(RegDeleteValueA(key, "missing"), 2);
    EXPECT_EQ(set_text(key, "v", "x"), 0);
    EXPECT_EQ(RegDeleteValueA(key, "V"), 0);
    EXPECT_EQ(RegDeleteValueA(key, "v"), 2);
}

TEST_F(RegistryValues, are_listed_in_the_order_of_their_names) {
    EXPECT_EQ(set_text(key, "b", "1"), 0);
    EXPECT_EQ(set_text(key, "A", "22", REG_BINARY), 0);
    EXPECT_EQ(set_text(key, "", "333"), 0);
    std::string listed;
    char name[10];
    for (DWORD i = 0;; ++i) {
        DWORD name_size = sizeof name, type = 0, size = 10;
        BYTE data[10];
        const LSTATUS status = RegEnumValueA(key, i, name, &name_size, nullptr, &type, data, &size);
        if (status != 0) {
            EXPECT_EQ(status, 259);
            break;
        }
        listed += std::string(name, name_size) + ":" + std::to_string(type) + ":" +
                  std::string(data, data + size) + " ";
    }
    EXPECT_EQ(listed, ":1:333 A:3:22 b:1:1 ");
}

TEST_F(RegistryValues, listing_reports_what_does_not_fit) {
    EXPECT_EQ(set_text(key, "name", "data"), 0);
    char name[5];
    DWORD name_size = 4;
    EXPECT_EQ(RegEnumValueA(key, 0, name, &name_size, nullptr, nullptr, nullptr, nullptr), 234);
    name_size = 5;
    BYTE data[4];
    DWORD size = 3;
    EXPECT_EQ(RegEnumValueA(key, 0, name, &name_size, nullptr, nullptr, data, &size), 234);
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(RegEnumValueA(key, 0, name, &name_size, nullptr, nullptr, data, nullptr), 87);
    EXPECT_EQ(RegEnumValueA(key, 0, nullptr, &name_size, nullptr, nullptr, nullptr, nullptr), 87);
    EXPECT_EQ(RegEnumValueA(key, 0, name, nullptr, nullptr, nullptr, nullptr, nullptr), 87);
}

TEST_F(RegistryValues, of_several_megabytes_are_kept) {
    const std::string large(std::size_t{5} << 20, 'x');
    EXPECT_EQ(set_text(key, "v", large), 0);
    EXPECT_EQ(text_of(key, "v") == large, true);
}

// The plain way: a map from names in lower case to texts.
TEST_F(RegistryValues, many_random_changes_leave_what_a_map_holds) {
    std::mt19937 random(20261122);
    std::map<std::string, std::string> plain;
    for (int i = 0; i < 2000; ++i) {
        std::string name = "n" + std::to_string(random() % 50);
        if (random() % 2 == 0) name[0] = 'N';
        std::string lower = name;
        lower[0] = 'n';
        if (random() % 3 == 0) {
            EXPECT_EQ(RegDeleteValueA(key, name.c_str()), plain.erase(lower) != 0 ? 0 : 2);
        } else {
            plain[lower] = std::string(random() % 300, static_cast<char>('a' + random() % 26));
            EXPECT_EQ(set_text(key, name.c_str(), plain[lower]), 0);
        }
    }
    for (int i = 0; i < 50; ++i) {
        const std::string name = "n" + std::to_string(i);
        EXPECT_EQ(text_of(key, name.c_str()), plain.contains(name) ? plain[name] : "(result 2)");
    }
}
