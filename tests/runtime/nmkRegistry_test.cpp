// A session on the registry: its keys and values.
#include <gtest/gtest.h>
#include <nmktoolbox/runtime/nmkRegistry.h>
#include <winapi/last_error.h>
#include <winapi/mutexes.h>
#include <winapi/processes.h>

#include <sys/stat.h>

#include <climits>
#include <cstring>
#include <string>

#include "child_process.h"
#include "holding_child.h"
#include "registry_scratch.h"

namespace {

const HKEY user = HKEY_CURRENT_USER;

// A registry of its own with a session on it, and the key "Software\a key" open to write.
class nmkRegistry_session : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(registry.create_key(user, "Software\\a key"), 0); }

    void put_bytes(const char* name, DWORD type, const std::string& bytes) const {
        const HKEY key = opened_key(user, "Software\\a key");
        EXPECT_EQ(set_text(key, name, bytes, type), 0);
        EXPECT_EQ(RegCloseKey(key), 0);
    }

    int integer_of(const char* name) {
        int value = -1;
        EXPECT_EQ(registry.query_value(name, value), 0);
        return value;
    }

    utString text_of_value(const char* name) {
        utString value = "before";
        EXPECT_EQ(registry.query_value(name, value), 0);
        return value;
    }

    RegistryScratch scratch;
    nmkRegistry registry;
};

// Calls the work with a session that is invalid, as another process holds the mutex until it is
// killed.
void with_an_invalid_session(void (*work)(nmkRegistry&)) {
    const RegistryScratch scratch;
    put_text(user, "a\\b", "v", "x");
    const HANDLE open_mutex = CreateMutexA(nullptr, FALSE, "com.norvex.registry");
    HoldingChild([] { new nmkRegistry; }).kill();
    {
        nmkRegistry registry;
        EXPECT_EQ(registry.valid(), 0);
        work(registry);
        EXPECT_EQ(text_of(user, "a\\b", "v"), "x");
    }
    EXPECT_NE(nmkRegistry().valid(), 0) << "the next object is valid";
    EXPECT_TRUE(CloseHandle(open_mutex));
}

// The open key, which no operation hands out. An explicit instantiation may name private members;
// it hands this one on through a friend function.
struct KeyOfSession {
    using Type = HKEY nmkRegistry::*;
    friend Type member_of(KeyOfSession);
};

template <class Tag, typename Tag::Type member>
struct Opened {
    friend typename Tag::Type member_of(Tag) { return member; }
};

template struct Opened<KeyOfSession, &nmkRegistry::m_key>;

DWORD result_of_reading(HKEY key) {
    return static_cast<DWORD>(RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr));
}

}  // namespace

TEST_F(nmkRegistry_session, is_valid_while_it_holds_the_mutex) {
    EXPECT_NE(registry.valid(), 0);
    EXPECT_EQ(in_a_child([] {
                  const HANDLE mutex = CreateMutexA(nullptr, FALSE, "com.norvex.registry");
                  return GetLastError() == 183 && WaitForSingleObject(mutex, 0) == WAIT_TIMEOUT ? 0
                                                                                                : 1;
              }),
              0);
}

TEST_F(nmkRegistry_session, a_second_object_of_the_same_thread_takes_the_mutex_as_well) {
    {
        const nmkRegistry second;
        EXPECT_NE(second.valid(), 0);
    }
    EXPECT_EQ(registry.set_value("v", 1), 0);
    EXPECT_EQ(in_a_child([] {
                  const HANDLE mutex = CreateMutexA(nullptr, FALSE, "com.norvex.registry");
                  return WaitForSingleObject(mutex, 0) == WAIT_TIMEOUT ? 0 : 1;
              }),
              0)
        << "the first still holds it";
}

TEST_F(nmkRegistry_session, writes_and_reads_integers) {
    for (const int value : {0, 1, -1, INT_MAX, INT_MIN}) {
        EXPECT_EQ(registry.set_value("v", value), 0);
        EXPECT_EQ(integer_of("V"), value);
    }
    const HKEY key = opened_key(user, "Software\\a key");
    DWORD type = 0, size = 0;
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, &type, nullptr, &size), 0);
    EXPECT_EQ(type, REG_DWORD);
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST_F(nmkRegistry_session, writes_texts_with_their_terminator) {
    EXPECT_EQ(registry.set_value("v", "text"), 0);
    EXPECT_EQ(text_of(user, "Software\\a key", "v"), std::string("text\0", 5));
    EXPECT_EQ(text_of_value("v"), "text");
    EXPECT_EQ(registry.set_value("v", ""), 0);
    EXPECT_EQ(text_of(user, "Software\\a key", "v"), std::string(1, '\0'));
    EXPECT_EQ(text_of_value("v"), "");
    EXPECT_EQ(registry.set_value("v", utString()), 0) << "the null string is the empty text";
    EXPECT_EQ(text_of(user, "Software\\a key", "v"), std::string(1, '\0'));
}

TEST_F(nmkRegistry_session, a_null_name_is_that_of_the_default_value) {
    EXPECT_EQ(registry.set_value(utString(), 7), 0);
    EXPECT_EQ(integer_of(""), 7);
}

TEST_F(nmkRegistry_session, a_missing_integer_leaves_the_variable_and_a_missing_text_empties_it) {
    int number = 42;
    EXPECT_EQ(registry.query_value("missing", number), 1);
    EXPECT_EQ(number, 42);
    utString text = "before";
    EXPECT_EQ(registry.query_value("missing", text), 1);
    EXPECT_EQ(text, "");
}

TEST_F(nmkRegistry_session, values_of_every_length_come_back_whole) {
    for (const std::size_t length : {1u, 254u, 255u, 256u, 257u, 258u, 70000u}) {
        std::string text;
        for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('a' + i % 23);
        EXPECT_EQ(registry.set_value("v", text.c_str()), 0);
        EXPECT_EQ(text_of_value("v"), text.c_str()) << length;
    }
}

TEST_F(nmkRegistry_session, an_integer_of_a_short_value_has_its_bytes_and_zeros) {
    put_bytes("one", REG_BINARY, "\x05");
    put_bytes("three", REG_DWORD, "\x01\x02\x03");
    put_bytes("none", REG_DWORD, "");
    put_bytes("five", REG_DWORD, std::string("\x01\0\0\0\x07", 5));
    EXPECT_EQ(integer_of("one"), 5);
    EXPECT_EQ(integer_of("three"), 0x030201);
    EXPECT_EQ(integer_of("none"), 0);
    EXPECT_EQ(integer_of("five"), 1);
}

TEST_F(nmkRegistry_session, values_are_read_whatever_their_type) {
    put_bytes("text", REG_SZ, "ABCD");
    EXPECT_EQ(integer_of("text"), 0x44434241);
    EXPECT_EQ(registry.set_value("number", 0x434241), 0);
    EXPECT_EQ(text_of_value("number"), "ABC");
}

TEST_F(nmkRegistry_session, a_text_ends_at_its_first_nul_or_at_the_end_of_the_value) {
    put_bytes("open", REG_SZ, "abc");
    put_bytes("two", REG_MULTI_SZ, std::string("ab\0cd\0\0", 7));
    put_bytes("none", REG_SZ, "");
    put_bytes("full", REG_SZ, std::string(4096, 'x'));
    EXPECT_EQ(text_of_value("open"), "abc");
    EXPECT_EQ(text_of_value("two"), "ab");
    EXPECT_EQ(text_of_value("none"), "");
    EXPECT_EQ(text_of_value("full").length(), 4096);
}

TEST_F(nmkRegistry_session, open_key_failing_keeps_the_old_key_open) {
    EXPECT_EQ(registry.set_value("v", 1), 0);
    EXPECT_EQ(registry.open_key(user, "missing", 1, 0), 1);
    EXPECT_EQ(integer_of("v"), 1);
    EXPECT_EQ(registry.set_value("v", 2), 0);
    EXPECT_EQ(integer_of("v"), 2);
}

TEST_F(nmkRegistry_session, open_subkey_after_a_failed_open_key_uses_the_last_mode_stored) {
    EXPECT_EQ(registry.create_subkey("sub"), 0);
    EXPECT_EQ(registry.open_key(user, "Software\\a key", 0, 0), 0);
    EXPECT_EQ(registry.open_key(user, "missing", 1, 0), 1);
    EXPECT_EQ(registry.open_subkey("sub"), 0);
    EXPECT_EQ(registry.set_value("v", 1), 0);
    EXPECT_EQ(registry.open_key(user, "Software\\a key", 1, 0), 0);
    EXPECT_EQ(registry.open_key(user, "missing", 0, 0), 1);
    EXPECT_EQ(registry.open_subkey("sub"), 0);
    EXPECT_EQ(registry.set_value("v", 2), 1);
    EXPECT_EQ(integer_of("v"), 1);
}

TEST_F(nmkRegistry_session, every_mode_but_0_writes) {
    for (const int mode : {1, 2, -1, INT_MIN}) {
        EXPECT_EQ(registry.open_key(user, "Software\\a key", mode, 0), 0);
        EXPECT_EQ(registry.set_value("v", mode), 0);
        EXPECT_EQ(integer_of("v"), mode);
    }
    EXPECT_EQ(registry.open_key(user, "Software\\a key", 0, 0), 0);
    EXPECT_EQ(registry.set_value("v", 7), 1);
}

TEST_F(nmkRegistry_session, the_mode_is_reading_before_the_first_open_key) {
    EXPECT_EQ(registry.create_subkey("sub"), 0);
    EXPECT_EQ(registry.create_key(user, "Software\\a key"), 0);
    EXPECT_EQ(registry.open_subkey("sub"), 0);
    EXPECT_EQ(registry.set_value("v", 1), 1);
}

TEST_F(nmkRegistry_session, create_key_does_not_change_the_mode) {
    EXPECT_EQ(registry.open_key(user, "Software", 1, 0), 0);
    EXPECT_EQ(registry.create_key(user, "Software\\a key\\sub"), 0);
    EXPECT_EQ(registry.create_key(user, "Software\\a key"), 0);
    EXPECT_EQ(registry.open_subkey("sub"), 0);
    EXPECT_EQ(registry.set_value("v", 1), 0);
}

TEST_F(nmkRegistry_session, extra_access_is_added_to_the_mode) {
    EXPECT_EQ(registry.open_key(user, "Software\\a key", 0, KEY_SET_VALUE), 0);
    EXPECT_EQ(registry.set_value("v", 1), 0);
}

TEST_F(nmkRegistry_session, a_created_key_can_be_written_and_is_relative_to_the_open_one) {
    EXPECT_EQ(registry.open_key(user, "Software\\a key", 0, 0), 0);
    EXPECT_EQ(registry.create_subkey("x\\y"), 0);
    EXPECT_EQ(registry.set_value("v", 1), 0);
    EXPECT_TRUE(has_key(user, "Software\\a key\\x\\y"));
}

TEST_F(nmkRegistry_session, after_create_key_fails_nothing_works_until_an_open_succeeds) {
    EXPECT_EQ(registry.create_key(user, "\\bad"), 1);
    int value = 42;
    EXPECT_EQ(registry.set_value("v", 1), 1);
    EXPECT_EQ(registry.query_value("v", value), 1);
    EXPECT_EQ(registry.open_subkey("sub"), 1);
    EXPECT_EQ(registry.create_subkey("sub"), 1);
    EXPECT_EQ(registry.delete_subkey("sub"), 1);
    EXPECT_EQ(registry.recursively_delete_subkey("sub"), 6);
    EXPECT_EQ(registry.open_key(user, "Software\\a key", 1, 0), 0);
    EXPECT_EQ(registry.set_value("v", 1), 0);
}

TEST(nmkRegistry, without_an_open_key_the_subkey_operations_fail) {
    const RegistryScratch scratch;
    nmkRegistry registry;
    EXPECT_EQ(registry.open_subkey("a"), 1);
    EXPECT_EQ(registry.create_subkey("a"), 1);
    EXPECT_EQ(registry.set_value("v", 1), 1);
    EXPECT_EQ(registry.delete_subkey("a"), 1);
}

TEST_F(nmkRegistry_session, delete_key_takes_keys_without_subkeys) {
    EXPECT_EQ(registry.create_subkey("x\\y"), 0);
    EXPECT_EQ(registry.open_key(user, "Software\\a key", 0, 0), 0);
    EXPECT_EQ(registry.delete_subkey("x"), 1);
    EXPECT_EQ(registry.delete_key(user, "Software\\a key\\x"), 1);
    EXPECT_EQ(registry.delete_subkey("x\\y"), 0) << "reading is enough";
    EXPECT_EQ(registry.delete_key(user, "Software\\a key\\x"), 0);
    EXPECT_EQ(registry.delete_key(user, "Software\\a key\\x"), 1);
    EXPECT_EQ(registry.delete_key(user, utString()), 1);
}

TEST_F(nmkRegistry_session, recursively_delete_key_returns_the_code_of_the_system) {
    EXPECT_EQ(registry.create_key(user, "Software\\other\\x\\y"), 0);
    EXPECT_EQ(registry.open_key(user, "Software\\other", 0, 0), 0);
    EXPECT_EQ(registry.recursively_delete_subkey("missing"), 2);
    EXPECT_EQ(registry.recursively_delete_key(user, "missing"), 2);
    EXPECT_EQ(registry.recursively_delete_subkey("x"), 0);
    EXPECT_EQ(registry.recursively_delete_key(user, "Software"), 0);
    EXPECT_FALSE(has_key(user, "Software"));
    EXPECT_EQ(registry.recursively_delete_key(user, ""), 5);
    EXPECT_EQ(registry.recursively_delete_key(user, utString()), 87);
}

TEST_F(nmkRegistry_session, a_key_that_is_deleted_while_open_fails_every_use) {
    EXPECT_EQ(registry.set_value("v", 1), 0);
    EXPECT_EQ(registry.delete_key(user, "Software\\a key"), 0);
    int value = 42;
    utString text = "before";
    EXPECT_EQ(registry.query_value("v", value), 1);
    EXPECT_EQ(registry.query_value("v", text), 1);
    EXPECT_EQ(registry.set_value("v", 1), 1);
    EXPECT_EQ(registry.open_subkey(""), 1);
    EXPECT_EQ(registry.recursively_delete_subkey("x"), 1018);
    EXPECT_EQ(value, 42);
    EXPECT_EQ(text, "");
}

TEST_F(nmkRegistry_session, copy_tree_copies_and_leaves_the_target_open) {
    EXPECT_EQ(registry.set_value("v", "x"), 0);
    EXPECT_EQ(registry.create_subkey("sub"), 0);
    EXPECT_EQ(registry.set_value("w", 5), 0);
    EXPECT_EQ(registry.copy_tree(user, "Software\\a key", "Software\\copy"), 0);
    EXPECT_EQ(text_of_value("v"), "x");
    EXPECT_EQ(registry.set_value("in the copy", 1), 0);
    EXPECT_EQ(registry.open_subkey("sub"), 0);
    EXPECT_EQ(integer_of("w"), 5);
    EXPECT_EQ(registry.open_key(user, "Software\\a key", 0, 0), 0);
    int value = 0;
    EXPECT_EQ(registry.query_value("in the copy", value), 1);
}

TEST_F(nmkRegistry_session, copy_tree_of_a_missing_key_fails_and_leaves_the_target_open) {
    EXPECT_EQ(registry.copy_tree(user, "missing", "target"), 1);
    EXPECT_EQ(registry.set_value("v", 1), 0);
    EXPECT_EQ(text_of(user, "target", "v"), std::string("\x01\0\0\0", 4));
    EXPECT_EQ(registry.copy_tree(user, "missing", "\\bad"), 1);
}

TEST_F(nmkRegistry_session, copy_tree_onto_or_into_itself_ends_and_loses_nothing) {
    EXPECT_EQ(registry.set_value("v", "x"), 0);
    EXPECT_EQ(registry.copy_tree(user, "Software\\a key", "Software\\A KEY"), 0);
    EXPECT_EQ(text_of_value("v"), "x");
    EXPECT_EQ(registry.copy_tree(user, "Software\\a key", "Software\\a key\\sub"), 1);
    EXPECT_EQ(text_of(user, "Software\\a key", "v"), std::string("x\0", 2));
    EXPECT_EQ(registry.copy_tree(user, utString(), "Software\\a key"), 1);
}

TEST_F(nmkRegistry_session, takes_an_open_key_in_place_of_a_root) {
    const HKEY key = created_key(user, "outside");
    EXPECT_EQ(registry.create_key(key, "below"), 0);
    EXPECT_TRUE(has_key(user, "outside\\below"));
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST(nmkRegistry, leaves_no_key_open_when_it_is_destroyed) {
    const RegistryScratch scratch;
    put_text(user, "a key", "v", "x");
    HKEY opened = nullptr;
    HKEY created = nullptr;
    {
        nmkRegistry registry;
        ASSERT_EQ(registry.open_key(user, "a key", 0, 0), 0);
        opened = registry.*member_of(KeyOfSession());
        EXPECT_EQ(result_of_reading(opened), ERROR_SUCCESS);
        nmkRegistry second;
        ASSERT_EQ(second.create_key(user, "a key"), 0);
        created = second.*member_of(KeyOfSession());
        EXPECT_EQ(result_of_reading(created), ERROR_SUCCESS);
    }
    EXPECT_EQ(result_of_reading(opened), ERROR_INVALID_HANDLE);
    EXPECT_EQ(result_of_reading(created), ERROR_INVALID_HANDLE);
}

TEST(nmkRegistry, that_is_invalid_fails_everything_and_touches_nothing) {
    with_an_invalid_session([](nmkRegistry& registry) {
        int number = 42;
        utString text = "before";
        EXPECT_EQ(registry.open_key(user, "a", 1, 0), 1);
        EXPECT_EQ(registry.open_subkey("a"), 1);
        EXPECT_EQ(registry.create_key(user, "c"), 1);
        EXPECT_EQ(registry.create_subkey("c"), 1);
        EXPECT_EQ(registry.copy_tree(user, "a", "c"), 1);
        EXPECT_EQ(registry.delete_key(user, "a\\b"), 1);
        EXPECT_EQ(registry.delete_subkey("a"), 1);
        EXPECT_EQ(registry.query_value("v", number), 1);
        EXPECT_EQ(registry.query_value("v", text), 1);
        EXPECT_EQ(registry.set_value("v", 1), 1);
        EXPECT_EQ(registry.set_value("v", "x"), 1);
        EXPECT_EQ(number, 42);
        EXPECT_EQ(text, "before");
        EXPECT_FALSE(has_key(user, "c"));
    });
}

TEST(nmkRegistry, that_is_invalid_returns_1_for_recursively_delete_key) {
    with_an_invalid_session([](nmkRegistry& registry) {
        EXPECT_EQ(registry.recursively_delete_key(user, "a"), 1);
        EXPECT_EQ(registry.recursively_delete_key(user, "missing"), 1);
        EXPECT_EQ(registry.recursively_delete_subkey("a"), 1);
    });
}

TEST(nmkRegistry, is_invalid_where_the_mutex_cannot_be_created) {
    const RegistryScratch scratch;
    ASSERT_EQ(::mkdir(scratch.in("locks").c_str(), 0700), 0);
    ASSERT_EQ(::mkdir(scratch.in("locks/com.norvex.registry").c_str(), 0700), 0);
    nmkRegistry registry;
    EXPECT_EQ(registry.valid(), 0);
    EXPECT_EQ(registry.create_key(user, "a"), 1);
}
