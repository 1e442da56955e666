// Opening, creating, listing, deleting and copying keys.
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "platform/winapi_fixtures.h"
#include "registry_scratch.h"
#include "winapi/processes.h"

namespace {

const HKEY user = HKEY_CURRENT_USER;

LSTATUS open_result(HKEY key, const char* path, REGSAM rights = KEY_READ) {
    HKEY opened = nullptr;
    const LSTATUS status = RegOpenKeyExA(key, path, 0, rights, &opened);
    EXPECT_EQ(opened != nullptr, status == 0);
    if (opened != nullptr) {
        EXPECT_EQ(RegCloseKey(opened), 0);
    }
    return status;
}

LSTATUS create_result(HKEY key, const char* path) {
    HKEY opened = nullptr;
    const LSTATUS status =
        RegCreateKeyExA(key, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &opened, nullptr);
    EXPECT_EQ(opened != nullptr, status == 0);
    if (opened != nullptr) {
        EXPECT_EQ(RegCloseKey(opened), 0);
    }
    return status;
}

// 1 created, 2 opened.
DWORD disposition_of(HKEY key, const char* path) {
    HKEY opened = nullptr;
    DWORD disposition = 0;
    EXPECT_EQ(RegCreateKeyExA(key, path, 0, nullptr, 0, KEY_READ, nullptr, &opened, &disposition),
              0);
    EXPECT_EQ(RegCloseKey(opened), 0);
    return disposition;
}

std::vector<std::string> subkeys_of(HKEY key) {
    std::vector<std::string> names;
    char name[256];
    DWORD size = sizeof name;
    for (DWORD i = 0; RegEnumKeyExA(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) == 0;
         ++i) {
        names.emplace_back(name, size);
        size = sizeof name;
    }
    return names;
}

using Names = std::vector<std::string>;

std::string nested_path(int levels) {
    std::string path = "k";
    for (int i = 1; i < levels; ++i) path += "\\k";
    return path;
}

// Keys by level below the current user.
HKEY deep_key(int levels) {
    HKEY key = user;
    for (int level = 0; level < levels; level += 16) {
        const HKEY next = created_key(key, nested_path(std::min(16, levels - level)));
        RegCloseKey(key);
        key = next;
    }
    return key;
}

struct PathCase {
    const char* name;
    std::string path;
    LSTATUS opened;   // what opening returns where "a\b" exists
    LSTATUS created;  // what creating returns
};

std::ostream& operator<<(std::ostream& stream, const PathCase& each) { return stream << each.name; }

class RegKey_path : public testing::TestWithParam<PathCase> {};

}  // namespace

TEST_P(RegKey_path, is_opened_and_created) {
    const RegistryScratch scratch;
    ASSERT_EQ(create_result(user, "a\\b"), 0);
    EXPECT_EQ(open_result(user, GetParam().path.c_str()), GetParam().opened);
    EXPECT_EQ(create_result(user, GetParam().path.c_str()), GetParam().created);
    EXPECT_EQ(open_result(user, GetParam().path.c_str()),
              GetParam().created == 0 ? 0 : GetParam().opened);
}

INSTANTIATE_TEST_SUITE_P(each, RegKey_path,
                         testing::Values(PathCase{"of_a_key_that_exists", "a\\b", 0, 0},
                                         PathCase{"in_another_case", "A\\B", 0, 0},
                                         PathCase{"that_is_empty", "", 0, 0},
                                         PathCase{"with_a_backslash_at_its_end", "a\\b\\", 0, 0},
                                         PathCase{"with_a_doubled_backslash", "a\\\\b", 0, 0},
                                         PathCase{"with_a_backslash_in_front", "\\a\\b", 161, 161},
                                         PathCase{"of_a_backslash_only", "\\", 161, 161},
                                         PathCase{"of_a_missing_key", "a\\c", 2, 0},
                                         PathCase{"below_a_missing_key", "x\\y\\z", 2, 0},
                                         PathCase{"with_a_slash", "a/b", 2, 0},
                                         PathCase{"of_two_dots", "a\\..", 2, 0},
                                         PathCase{"with_quotes", "a\\' OR 1=1 --\"", 2, 0},
                                         PathCase{"with_line_ends", "a\\x\r\n", 2, 0},
                                         PathCase{"with_percent_and_underscore", "a\\_", 2, 0},
                                         PathCase{"that_is_not_valid_text", "a\\\xFF\xC0", 2, 0},
                                         PathCase{"of_255_letters", std::string(255, 'x'), 2, 0},
                                         PathCase{"of_256_letters", std::string(256, 'x'), 2, 87},
                                         PathCase{"of_32_new_levels", nested_path(32), 2, 0},
                                         PathCase{"of_33_new_levels", nested_path(33), 2, 87}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(RegOpenKeyExA, distinguishes_names_by_everything_but_the_case_of_ascii_letters) {
    const RegistryScratch scratch;
    ASSERT_EQ(create_result(user,
                            "Stra\xC3\x9F"
                            "e \xC3\xA4"),
              0);
    EXPECT_EQ(open_result(user,
                          "sTRA\xC3\x9F"
                          "E \xC3\xA4"),
              0);
    EXPECT_EQ(open_result(user,
                          "stra\xC3\x9F"
                          "e \xC3\x84"),
              2)
        << "only ASCII letters have a case";
    EXPECT_EQ(open_result(user, "strasse \xC3\xA4"), 2);
}

TEST(RegOpenKeyExA, takes_a_null_path_for_roots_only) {
    const RegistryScratch scratch;
    EXPECT_EQ(open_result(user, nullptr), 0);
    const HKEY key = created_key(user, "a");
    EXPECT_EQ(open_result(key, nullptr), 87);
    EXPECT_EQ(RegOpenKeyExA(key, "", 0, KEY_READ, nullptr), 87);
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST(RegOpenKeyExA, gives_another_handle_for_the_empty_path) {
    const RegistryScratch scratch;
    const HKEY key = created_key(user, "a");
    const HKEY same = opened_key(key, "");
    EXPECT_NE(key, same);
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_EQ(set_text(same, "v", "x"), 0);
    EXPECT_EQ(text_of(user, "a", "v"), "x");
    EXPECT_EQ(RegCloseKey(same), 0);
}

TEST(RegOpenKeyExA, fails_for_a_closed_or_other_handle) {
    const RegistryScratch scratch;
    const HKEY key = created_key(user, "a");
    EXPECT_FALSE(CloseHandle(key)) << "keys have a call of their own";
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_EQ(RegCloseKey(key), 6);
    EXPECT_EQ(open_result(key, ""), 6);
    EXPECT_EQ(open_result(nullptr, "a"), 6);
    EXPECT_EQ(create_result(key, "b"), 6);
    EXPECT_EQ(RegDeleteKeyA(key, "b"), 6);
    EXPECT_EQ(SHDeleteKeyA(key, "b"), 6);
    EXPECT_EQ(set_text(key, "v", "x"), 6);
    EXPECT_EQ(RegDeleteValueA(key, "v"), 6);
    EXPECT_EQ(RegCopyTreeA(user, "a", key), 6);
    EXPECT_EQ(RegFlushKey(key), 6);
    EXPECT_EQ(text_of(key, "v"), "(result 6)");
}

TEST(RegOpenKeyExA, leaves_the_last_error_alone) {
    const RegistryScratch scratch;
    SetLastError(untouched);
    EXPECT_EQ(open_result(user, "missing"), 2);
    EXPECT_EQ(GetLastError(), untouched);
}

TEST(RegCloseKey, leaves_roots_open) {
    const RegistryScratch scratch;
    EXPECT_EQ(RegCloseKey(user), 0);
    EXPECT_EQ(create_result(user, "a"), 0);
}

TEST(RegCreateKeyExA, reports_whether_the_key_was_new) {
    const RegistryScratch scratch;
    EXPECT_EQ(disposition_of(user, "a\\b\\c"), 1u);
    EXPECT_EQ(disposition_of(user, "A\\B\\C"), 2u);
    EXPECT_EQ(disposition_of(user, "a\\b"), 2u);
    EXPECT_EQ(disposition_of(user, ""), 2u);
}

TEST(RegCreateKeyExA, keeps_the_case_in_which_a_name_was_created) {
    const RegistryScratch scratch;
    EXPECT_EQ(create_result(user, "MiXed"), 0);
    EXPECT_EQ(create_result(user, "mIxED\\Sub"), 0);
    EXPECT_EQ(subkeys_of(user), (Names{"MiXed"}));
}

TEST(RegCreateKeyExA, makes_a_key_without_values) {
    const RegistryScratch scratch;
    put_text(user, "a", "v", "x");
    EXPECT_EQ(RegDeleteKeyA(user, "a"), 0);
    EXPECT_EQ(create_result(user, "a"), 0);
    EXPECT_EQ(text_of(user, "a", "v"), "(result 2)");
}

TEST(RegCreateKeyExA, refuses_what_it_does_not_support) {
    const RegistryScratch scratch;
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExA(user, nullptr, 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr), 87);
    EXPECT_EQ(RegCreateKeyExA(user, "a", 0, nullptr, 1, KEY_READ, nullptr, &key, nullptr), 87);
    EXPECT_EQ(RegCreateKeyExA(user, "a", 1, nullptr, 0, KEY_READ, nullptr, &key, nullptr), 87);
    EXPECT_EQ(RegCreateKeyExA(user, "a", 0, nullptr, 0, KEY_READ, nullptr, nullptr, nullptr), 87);
    EXPECT_EQ(RegCreateKeyExA(user, "a", 0, nullptr, 0, KEY_READ, &key, &key, nullptr), 87);
    EXPECT_EQ(key, nullptr);
    EXPECT_FALSE(has_key(user, "a"));
}

TEST(RegCreateKeyExA, makes_all_levels_or_none) {
    const RegistryScratch scratch;
    const HKEY key = deep_key(500);
    EXPECT_EQ(create_result(key, nested_path(13).c_str()), 87);
    EXPECT_EQ(subkeys_of(key), Names{});
    EXPECT_EQ(create_result(key, nested_path(12).c_str()), 0);
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST(RegCreateKeyExA, creates_nothing_directly_below_the_machine_and_the_users) {
    const RegistryScratch scratch;
    EXPECT_EQ(create_result(HKEY_LOCAL_MACHINE, "new"), 87);
    EXPECT_EQ(create_result(HKEY_USERS, "new\\below"), 87);
    EXPECT_EQ(create_result(HKEY_LOCAL_MACHINE, "SOFTWARE\\new"), 0);
    EXPECT_EQ(create_result(HKEY_USERS, ".DEFAULT\\new"), 0);
    EXPECT_EQ(create_result(HKEY_CLASSES_ROOT, "new"), 0);
    EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software"), 5);
    EXPECT_EQ(SHDeleteKeyA(HKEY_LOCAL_MACHINE, "Software"), 5);
    EXPECT_TRUE(has_key(HKEY_LOCAL_MACHINE, "Software\\new"));
}

TEST(RegCreateKeyExA, does_not_ask_for_the_rights_of_the_handle) {
    const RegistryScratch scratch;
    ASSERT_EQ(create_result(user, "a"), 0);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(user, "a", 0, KEY_QUERY_VALUE, &key), 0);
    EXPECT_EQ(create_result(key, "b"), 0);
    EXPECT_EQ(RegDeleteKeyA(key, "b"), 0);
    EXPECT_EQ(set_text(key, "v", "x"), 5);
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST(RegEnumKeyExA, lists_the_names_in_order) {
    const RegistryScratch scratch;
    for (const char* const name : {"b", "C", "a", "a b", "\xC3\xA4"}) create_result(user, name);
    create_result(user, "b\\below");
    EXPECT_EQ(subkeys_of(user), (Names{"a", "a b", "b", "C", "\xC3\xA4"}));
}

TEST(RegEnumKeyExA, returns_259_past_the_end_and_234_without_room) {
    const RegistryScratch scratch;
    create_result(user, "name");
    char name[5] = "????";
    DWORD size = 4;
    EXPECT_EQ(RegEnumKeyExA(user, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 234);
    EXPECT_STREQ(name, "????");
    EXPECT_EQ(size, 4u);
    size = 5;
    char class_name[2] = "?";
    DWORD class_size = 2;
    FILETIME time = {1, 1};
    EXPECT_EQ(RegEnumKeyExA(user, 0, name, &size, nullptr, class_name, &class_size, &time), 0);
    EXPECT_STREQ(name, "name");
    EXPECT_EQ(size, 4u);
    EXPECT_STREQ(class_name, "");
    EXPECT_EQ(class_size, 0u);
    EXPECT_EQ(time.dwLowDateTime, 0u);
    EXPECT_EQ(RegEnumKeyExA(user, 1, name, &size, nullptr, nullptr, nullptr, nullptr), 259);
    EXPECT_EQ(RegEnumKeyExA(user, 0xFFFFFFFF, name, &size, nullptr, nullptr, nullptr, nullptr),
              259);
    EXPECT_EQ(RegEnumKeyExA(user, 0, nullptr, &size, nullptr, nullptr, nullptr, nullptr), 87);
    EXPECT_EQ(RegEnumKeyExA(user, 0, name, nullptr, nullptr, nullptr, nullptr, nullptr), 87);
}

TEST(RegEnumKeyExA, needs_its_right) {
    const RegistryScratch scratch;
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(user, "", 0, KEY_QUERY_VALUE, &key), 0);
    char name[10];
    DWORD size = sizeof name;
    EXPECT_EQ(RegEnumKeyExA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 5);
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST(RegDeleteKeyA, takes_keys_without_subkeys_only) {
    const RegistryScratch scratch;
    put_text(user, "a\\b", "v", "x");
    EXPECT_EQ(RegDeleteKeyA(user, "a"), 5);
    EXPECT_EQ(text_of(user, "a\\b", "v"), "x");
    EXPECT_EQ(RegDeleteKeyA(user, "A\\B"), 0);
    EXPECT_EQ(RegDeleteKeyA(user, "a\\b"), 2);
    EXPECT_EQ(RegDeleteKeyA(user, "a"), 0);
    EXPECT_EQ(RegDeleteKeyA(user, nullptr), 87);
    EXPECT_EQ(RegDeleteKeyA(user, "\\a"), 161);
    EXPECT_EQ(RegDeleteKeyA(user, ""), 5) << "roots stay";
    EXPECT_EQ(SHDeleteKeyA(user, ""), 5);
}

TEST(RegDeleteKeyA, the_empty_path_deletes_the_key_itself) {
    const RegistryScratch scratch;
    const HKEY key = created_key(user, "a");
    EXPECT_EQ(RegDeleteKeyA(key, ""), 0);
    EXPECT_FALSE(has_key(user, "a"));
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST(RegDeleteKeyA, of_a_key_that_is_open_makes_every_use_of_the_handle_fail) {
    const RegistryScratch scratch;
    put_text(user, "a", "v", "x");
    const HKEY key = opened_key(user, "a");
    ASSERT_EQ(RegDeleteKeyA(user, "a"), 0);
    EXPECT_EQ(open_result(user, "a"), 2);
    EXPECT_EQ(disposition_of(user, "a"), 1u) << "it is created again";
    char name[10];
    DWORD size = sizeof name;
    EXPECT_EQ(text_of(key, "v"), "(result 1018)");
    EXPECT_EQ(set_text(key, "v", "y"), 1018);
    EXPECT_EQ(RegDeleteValueA(key, "v"), 1018);
    EXPECT_EQ(open_result(key, ""), 1018);
    EXPECT_EQ(open_result(key, "b"), 1018);
    EXPECT_EQ(create_result(key, ""), 1018);
    EXPECT_EQ(create_result(key, "b"), 1018);
    EXPECT_EQ(RegDeleteKeyA(key, "b"), 1018);
    EXPECT_EQ(SHDeleteKeyA(key, "b"), 1018);
    EXPECT_EQ(RegEnumKeyExA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 1018);
    EXPECT_EQ(RegEnumValueA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 1018);
    EXPECT_EQ(RegCopyTreeA(key, nullptr, user), 1018);
    EXPECT_EQ(RegCopyTreeA(user, "a", key), 1018);
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_EQ(text_of(user, "a", "v"), "(result 2)");
}

TEST(SHDeleteKeyA, deletes_the_key_with_all_that_is_below) {
    const RegistryScratch scratch;
    for (const char* const path : {"a\\b\\c\\d", "a\\e", "a\\b\\f", "other"}) {
        put_text(user, path, "v", "x");
    }
    EXPECT_EQ(SHDeleteKeyA(user, "a\\missing"), 2);
    EXPECT_EQ(SHDeleteKeyA(user, nullptr), 87);
    EXPECT_EQ(SHDeleteKeyA(user, "a"), 0);
    EXPECT_EQ(subkeys_of(user), (Names{"other"}));
    EXPECT_EQ(create_result(user, "a\\b\\c\\d"), 0);
    EXPECT_EQ(text_of(user, "a\\b\\c\\d", "v"), "(result 2)");
}

TEST(RegCopyTreeA, merges_values_and_subkeys_into_the_target) {
    const RegistryScratch scratch;
    put_text(user, "from", "V", "new");
    put_text(user, "from", "", "default");
    put_text(user, "from\\Sub\\deep", "v", "deep");
    put_text(user, "to", "v", "old");
    put_text(user, "to", "other", "stays");
    put_text(user, "to\\sub", "other", "stays too");
    const HKEY to = opened_key(user, "to");
    EXPECT_EQ(RegCopyTreeA(user, "from", to), 0);
    EXPECT_EQ(text_of(to, "v"), "new");
    EXPECT_EQ(text_of(to, nullptr), "default");
    EXPECT_EQ(text_of(to, "other"), "stays");
    EXPECT_EQ(text_of(user, "to\\sub\\deep", "v"), "deep");
    EXPECT_EQ(text_of(user, "to\\sub", "other"), "stays too");
    EXPECT_EQ(text_of(user, "from\\sub\\deep", "v"), "deep");
    EXPECT_EQ(subkeys_of(to), (Names{"sub"}));
    EXPECT_EQ(RegCopyTreeA(user, "missing", to), 2);
    EXPECT_EQ(RegCopyTreeA(user, "\\from", to), 161);
    EXPECT_EQ(RegCloseKey(to), 0);
}

TEST(RegCopyTreeA, copies_an_open_key_by_a_null_path) {
    const RegistryScratch scratch;
    put_text(user, "from", "v", "x");
    const HKEY from = opened_key(user, "from");
    const HKEY to = created_key(user, "to");
    EXPECT_EQ(RegCopyTreeA(from, nullptr, to), 0);
    EXPECT_EQ(text_of(to, "v"), "x");
    EXPECT_EQ(RegCloseKey(from), 0);
    EXPECT_EQ(RegCloseKey(to), 0);
}

TEST(RegCopyTreeA, onto_itself_changes_nothing) {
    const RegistryScratch scratch;
    put_text(user, "a\\b", "v", "x");
    const HKEY to = opened_key(user, "A");
    EXPECT_EQ(RegCopyTreeA(user, "a", to), 0);
    EXPECT_EQ(text_of(user, "a\\b", "v"), "x");
    EXPECT_EQ(subkeys_of(to), (Names{"b"}));
    EXPECT_EQ(RegCloseKey(to), 0);
}

TEST(RegCopyTreeA, into_what_is_below_is_refused_and_loses_nothing) {
    const RegistryScratch scratch;
    put_text(user, "a", "v", "x");
    put_text(user, "a\\b\\c", "v", "y");
    const HKEY to = opened_key(user, "a\\b\\c");
    EXPECT_EQ(RegCopyTreeA(user, "a", to), 87);
    EXPECT_EQ(RegCopyTreeA(user, "", to), 87);
    EXPECT_EQ(text_of(to, "v"), "y");
    EXPECT_EQ(subkeys_of(to), Names{});
    EXPECT_EQ(RegCloseKey(to), 0);
}

TEST(RegCopyTreeA, into_what_is_above_copies_each_key_as_it_was) {
    const RegistryScratch scratch;
    put_text(user, "a", "v", "0");
    put_text(user, "a\\b", "v", "1");
    put_text(user, "a\\b\\b", "v", "2");
    put_text(user, "a\\b\\b\\b", "v", "3");
    const HKEY to = opened_key(user, "a");
    EXPECT_EQ(RegCopyTreeA(user, "a\\b", to), 0);
    EXPECT_EQ(text_of(user, "a", "v"), "1");
    EXPECT_EQ(text_of(user, "a\\b", "v"), "2");
    EXPECT_EQ(text_of(user, "a\\b\\b", "v"), "3");
    EXPECT_EQ(text_of(user, "a\\b\\b\\b", "v"), "3");
    EXPECT_EQ(RegCloseKey(to), 0);
}

TEST(RegCopyTreeA, beyond_the_limit_of_levels_copies_nothing) {
    const RegistryScratch scratch;
    const HKEY deep = deep_key(500);
    const HKEY from = created_key(HKEY_CLASSES_ROOT, nested_path(13));
    EXPECT_EQ(RegCopyTreeA(HKEY_CLASSES_ROOT, "k", deep), 0) << "12 levels below it";
    EXPECT_EQ(SHDeleteKeyA(deep, "k"), 0);
    EXPECT_EQ(RegCopyTreeA(HKEY_CLASSES_ROOT, "", deep), 87);
    EXPECT_EQ(subkeys_of(deep), Names{});
    EXPECT_EQ(RegCloseKey(from), 0);
    EXPECT_EQ(RegCloseKey(deep), 0);
}

TEST(RegCopyTreeA, needs_the_right_to_set_values_of_the_target) {
    const RegistryScratch scratch;
    put_text(user, "from", "v", "x");
    HKEY to = nullptr;
    create_result(user, "to");
    ASSERT_EQ(RegOpenKeyExA(user, "to", 0, KEY_READ, &to), 0);
    EXPECT_EQ(RegCopyTreeA(user, "from", to), 5);
    EXPECT_EQ(RegCloseKey(to), 0);
}
