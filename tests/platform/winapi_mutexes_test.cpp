// Mutexes that threads and processes share by name.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winapi/mutexes.h>
#include <winapi/processes.h>

#include <chrono>
#include <string>
#include <thread>

#include "holding_child.h"
#include "platform/winapi_fixtures.h"
#include "registry_scratch.h"

namespace {

constexpr const char* name = "a name";

HANDLE mutex_of(const char* of_name = name) { return CreateMutexA(nullptr, FALSE, of_name); }

// Waits for the mutex without patience, in a thread of its own.
DWORD wait_in_a_thread(HANDLE mutex) {
    DWORD result = WAIT_FAILED;
    std::thread([&] {
        result = WaitForSingleObject(mutex, 0);
        if (result == WAIT_OBJECT_0) ReleaseMutex(mutex);
    }).join();
    return result;
}

struct NameCase {
    const char* name;
    std::string mutex;
    DWORD last_error;  // of its creation
};

std::ostream& operator<<(std::ostream& stream, const NameCase& each) { return stream << each.name; }

class CreateMutexA_name : public testing::TestWithParam<NameCase> {};

}  // namespace

TEST_P(CreateMutexA_name, is_taken_or_refused) {
    const RegistryScratch scratch;
    SetLastError(untouched);
    const HANDLE mutex = mutex_of(GetParam().mutex.c_str());
    EXPECT_EQ(GetLastError(), GetParam().last_error);
    EXPECT_EQ(mutex != nullptr, GetParam().last_error == 0);
    EXPECT_EQ(CloseHandle(mutex), mutex != nullptr);
}

INSTANTIATE_TEST_SUITE_P(each, CreateMutexA_name,
                         testing::Values(NameCase{"of_letters_and_dots", "com.norvex.registry", 0},
                                         NameCase{"with_a_slash_and_dots", "../../x/..", 0},
                                         NameCase{"of_two_dots", "..", 0},
                                         NameCase{"with_quotes_and_a_line_end", "a'\"\n", 0},
                                         NameCase{"that_is_not_valid_text", "\xFF\xFE", 0},
                                         NameCase{"with_a_local_prefix", "Local\\name", 0},
                                         NameCase{"with_a_global_prefix", "Global\\name", 0},
                                         NameCase{"with_a_prefix_only", "Global\\", 87},
                                         NameCase{"with_another_backslash", "a\\b", 3},
                                         NameCase{"with_two_prefixes", "Global\\Local\\a", 3},
                                         NameCase{"that_is_empty", "", 87},
                                         NameCase{"of_250_letters", std::string(250, 'x'), 0},
                                         NameCase{"longer_than_a_file_name", std::string(259, 'x'),
                                                  206},
                                         NameCase{"of_260_letters", std::string(260, 'x'), 206}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(CreateMutexA, a_name_that_exists_gives_a_handle_and_last_error_183) {
    const RegistryScratch scratch;
    const HANDLE first = mutex_of();
    EXPECT_EQ(GetLastError(), 0u);
    const HANDLE second = CreateMutexA(nullptr, TRUE, name);
    EXPECT_EQ(GetLastError(), 183u);
    EXPECT_NE(first, second);
    EXPECT_EQ(wait_in_a_thread(second), WAIT_OBJECT_0) << "the initial owner is ignored";
    EXPECT_EQ(in_a_child([] { return mutex_of() != nullptr && GetLastError() == 183 ? 0 : 1; }), 0);
    EXPECT_TRUE(CloseHandle(first));
    EXPECT_TRUE(CloseHandle(second));
    const HANDLE third = mutex_of();
    EXPECT_EQ(GetLastError(), 0u) << "it ended with its last handle";
    EXPECT_TRUE(CloseHandle(third));
}

TEST(CreateMutexA, names_distinguish_upper_and_lower_case) {
    const RegistryScratch scratch;
    const HANDLE lower = mutex_of("name");
    const HANDLE upper = mutex_of("NAME");
    EXPECT_EQ(GetLastError(), 0u);
    EXPECT_EQ(WaitForSingleObject(lower, 0), WAIT_OBJECT_0);
    EXPECT_EQ(wait_in_a_thread(upper), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(lower));
    EXPECT_TRUE(CloseHandle(lower));
    EXPECT_TRUE(CloseHandle(upper));
}

TEST(CreateMutexA, refuses_a_null_name_and_security) {
    const RegistryScratch scratch;
    EXPECT_EQ(mutex_of(nullptr), nullptr);
    EXPECT_EQ(GetLastError(), 87u);
    const char security = 0;
    EXPECT_EQ(CreateMutexA(&security, FALSE, name), nullptr);
    EXPECT_EQ(GetLastError(), 87u);
}

TEST(CreateMutexA, the_initial_owner_owns_a_new_mutex) {
    const RegistryScratch scratch;
    const HANDLE mutex = CreateMutexA(nullptr, TRUE, name);
    EXPECT_EQ(wait_in_a_thread(mutex), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(wait_in_a_thread(mutex), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(CreateMutexA, needs_a_directory_that_it_may_write) {
    const RegistryScratch scratch;
    ASSERT_EQ(::chmod(scratch.path().c_str(), 0555), 0);
    EXPECT_EQ(
        without_rights([] { return mutex_of() == nullptr ? static_cast<int>(GetLastError()) : 0; }),
        5);
}

TEST(CreateMutexA, a_lock_file_that_is_a_symlink_is_refused) {
    const RegistryScratch scratch;
    ASSERT_EQ(::mkdir(scratch.in("locks").c_str(), 0700), 0);
    ASSERT_EQ(::symlink(scratch.in("elsewhere").c_str(), scratch.in("locks/name").c_str()), 0);
    EXPECT_EQ(mutex_of("name"), nullptr);
    EXPECT_FALSE(is_there(scratch.in("elsewhere")));
}

TEST(ReleaseMutex, is_needed_as_often_as_the_thread_waited_also_through_another_handle) {
    const RegistryScratch scratch;
    const HANDLE first = mutex_of();
    const HANDLE second = mutex_of();
    EXPECT_EQ(WaitForSingleObject(first, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(second, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(first));
    EXPECT_EQ(wait_in_a_thread(first), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(first));
    EXPECT_EQ(wait_in_a_thread(second), WAIT_OBJECT_0);
    EXPECT_FALSE(ReleaseMutex(second));
    EXPECT_EQ(GetLastError(), 288u);
    EXPECT_TRUE(CloseHandle(first));
    EXPECT_TRUE(CloseHandle(second));
}

TEST(ReleaseMutex, by_another_thread_is_refused) {
    const RegistryScratch scratch;
    const HANDLE mutex = mutex_of();
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    BOOL released = TRUE;
    DWORD last_error = 0;
    std::thread([&] {
        released = ReleaseMutex(mutex);
        last_error = GetLastError();
    }).join();
    EXPECT_FALSE(released);
    EXPECT_EQ(last_error, 288u);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(ReleaseMutex, fails_for_other_handles) {
    EXPECT_FALSE(ReleaseMutex(nullptr));
    EXPECT_EQ(GetLastError(), 6u);
    EXPECT_FALSE(ReleaseMutex(HKEY_CURRENT_USER));
    EXPECT_EQ(GetLastError(), 6u);
}

TEST(NamedMutex, excludes_another_process_until_it_is_released) {
    const RegistryScratch scratch;
    const HANDLE mutex = mutex_of();
    {
        const HoldingChild owner([] { WaitForSingleObject(mutex_of(), INFINITE); });
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(WaitForSingleObject(mutex, 30), WAIT_TIMEOUT);
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
    }
    EXPECT_EQ(WaitForSingleObject(mutex, INFINITE), WAIT_ABANDONED);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(NamedMutex, whose_owner_was_killed_alone_is_new_for_the_next) {
    const RegistryScratch scratch;
    HoldingChild([] { WaitForSingleObject(mutex_of(), INFINITE); }).kill();
    const HANDLE mutex = mutex_of();
    EXPECT_EQ(GetLastError(), 0u);
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(NamedMutex, wakes_a_waiter_when_its_owner_is_killed) {
    const RegistryScratch scratch;
    const HANDLE mutex = mutex_of();
    HoldingChild owner([] { WaitForSingleObject(mutex_of(), INFINITE); });
    DWORD result = WAIT_FAILED;
    std::thread waiter([&] {
        result = WaitForSingleObject(mutex, INFINITE);
        ReleaseMutex(mutex);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    owner.kill();
    waiter.join();
    EXPECT_EQ(result, WAIT_ABANDONED);
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(NamedMutex, of_a_thread_that_ended_is_abandoned) {
    const RegistryScratch scratch;
    const HANDLE mutex = mutex_of();
    std::thread([&] { EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0); }).join();
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(wait_in_a_thread(mutex), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(NamedMutex, is_not_owned_by_a_forked_child_and_not_kept_by_it) {
    const RegistryScratch scratch;
    const HANDLE mutex = mutex_of();
    HoldingChild owner([&] {
        WaitForSingleObject(mutex, INFINITE);
        if (::fork() == 0) {
            ::sleep(5);
            ::_exit(0);
        }
        EXPECT_EQ(in_a_child([&] { return ReleaseMutex(mutex) ? 1 : 0; }), 0);
        EXPECT_EQ(in_a_child([&] { return WaitForSingleObject(mutex, 0) == WAIT_TIMEOUT ? 0 : 1; }),
                  0);
    });
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_TIMEOUT);
    owner.kill();
    EXPECT_EQ(WaitForSingleObject(mutex, 2000), WAIT_ABANDONED);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(NamedMutex, stays_locked_when_another_descriptor_of_its_file_is_closed) {
    const RegistryScratch scratch;
    const HANDLE mutex = mutex_of("name");
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    const int other = ::open(scratch.in("locks/name").c_str(), O_RDWR);
    ASSERT_GE(other, 0);
    ::close(other);
    EXPECT_EQ(wait_in_a_thread(mutex), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(NamedMutex, whose_file_is_deleted_meanwhile_still_has_one_owner) {
    const RegistryScratch scratch;
    const HANDLE mutex = mutex_of("name");
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    DWORD result = WAIT_FAILED;
    std::thread waiter([&] {
        result = WaitForSingleObject(mutex, INFINITE);
        if (result == WAIT_OBJECT_0) {
            EXPECT_EQ(wait_in_a_thread(mutex), WAIT_TIMEOUT);
        }
        ReleaseMutex(mutex);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ASSERT_EQ(::unlink(scratch.in("locks/name").c_str()), 0);
    EXPECT_TRUE(ReleaseMutex(mutex));
    waiter.join();
    EXPECT_EQ(result, WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(configuration_directory, is_that_of_the_host_or_follows_the_environment) {
    EXPECT_EQ(in_a_child([] {
                  ::setenv("XDG_CONFIG_HOME", "/somewhere/", 1);
                  if (winapi::configuration_directory() != "/somewhere/nmktoolbox") return 1;
                  ::setenv("XDG_CONFIG_HOME", "relative", 1);
                  ::setenv("HOME", "/home/one", 1);
                  if (winapi::configuration_directory() != "/home/one/.config/nmktoolbox") return 2;
                  ::unsetenv("HOME");
                  if (winapi::configuration_directory().empty()) return 3;
                  winapi::set_configuration_directory("/named/by/host/");
                  if (winapi::configuration_directory() != "/named/by/host") return 4;
                  winapi::set_configuration_directory("");
                  return winapi::configuration_directory() == "/named/by/host" ? 5 : 0;
              }),
              0);
}
