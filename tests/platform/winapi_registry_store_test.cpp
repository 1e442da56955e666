// The file of the registry: what it survives, and what it refuses.
#include <fcntl.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <winapi/mutexes.h>
#include <winapi/processes.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/winapi_fixtures.h"
#include "registry_scratch.h"

namespace {

std::atomic<int> flushes_to_the_disk = 0;

}  // namespace

// Replaces that of the C library, which SQLite calls, for this program.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the header's is reserved
extern "C" int fdatasync(int descriptor) {
    ++flushes_to_the_disk;
    return static_cast<int>(::syscall(SYS_fdatasync, descriptor));
}

namespace {

namespace fs = std::filesystem;

const HKEY user = HKEY_CURRENT_USER;

// Makes a store with the value "v" in the key "a"; in a child, so that this process has not opened
// it.
void make_store(const std::string& text = "x") {
    EXPECT_EQ(in_a_child([&] {
                  put_text(user, "a", "v", text);
                  return RegFlushKey(user);
              }),
              0);
}

std::string value_in_a_child() {
    int ends[2] = {};
    EXPECT_EQ(::pipe(ends), 0);
    EXPECT_EQ(in_a_child([&] {
                  const std::string text = text_of(user, "a", "v");
                  return ::write(ends[1], text.data(), text.size()) ==
                                 static_cast<ssize_t>(text.size())
                             ? 0
                             : 1;
              }),
              0);
    ::close(ends[1]);
    std::string text(1000, '\0');
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(::read(ends[0], text.data(), 1000), 0)));
    ::close(ends[0]);
    return text;
}

void run_sql(const std::string& file, const char* statements) {
    sqlite3* connection = nullptr;
    EXPECT_EQ(::sqlite3_open(file.c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(::sqlite3_exec(connection, statements, nullptr, nullptr, nullptr), SQLITE_OK)
        << ::sqlite3_errmsg(connection);
    ::sqlite3_close(connection);
}

void overwrite(const std::string& file, off_t offset, const std::string& bytes) {
    const int number = ::open(file.c_str(), O_WRONLY);
    ASSERT_GE(number, 0);
    EXPECT_EQ(::pwrite(number, bytes.data(), bytes.size(), offset),
              static_cast<ssize_t>(bytes.size()));
    ::close(number);
}

LSTATUS status_of_a_use() {
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExA(user, "a", 0, KEY_READ, &key);
    if (status == 0) RegCloseKey(key);
    return status;
}

// A store of several pages whose log is empty.
void make_large_store() {
    make_store();
    EXPECT_EQ(in_a_child([] {
                  const HKEY key = created_key(user, "large");
                  for (int i = 0; i < 200; ++i) {
                      set_text(key, std::to_string(i).c_str(), std::string(300, 'x'));
                  }
                  return 0;
              }),
              0);
}

struct ForeignCase {
    const char* name;
    const char* statements;  // on the file of a store, or on an empty file
    bool is_from_a_store;
};

std::ostream& operator<<(std::ostream& stream, const ForeignCase& each) {
    return stream << each.name;
}

class RegistryStore_foreign : public testing::TestWithParam<ForeignCase> {};

struct DamageCase {
    const char* name;
    void (*damage)(const std::string& file);
};

std::ostream& operator<<(std::ostream& stream, const DamageCase& each) {
    return stream << each.name;
}

class RegistryStore_damaged : public testing::TestWithParam<DamageCase> {};

}  // namespace

TEST(RegistryStore, is_a_file_of_the_users_own) {
    const RegistryScratch scratch;
    put_text(user, "a", "v", "x");
    struct stat record;
    ASSERT_EQ(::stat(scratch.store_directory().c_str(), &record), 0);
    EXPECT_EQ(record.st_mode & 0777u, 0700u);
    EXPECT_TRUE(fs::exists(scratch.store_file()));
    EXPECT_EQ(winapi::registry_store_file(), scratch.store_file());
}

TEST(RegistryStore, is_seen_by_other_processes_at_once) {
    const RegistryScratch scratch;
    put_text(user, "a", "v", "x");
    EXPECT_EQ(value_in_a_child(), "x");
    EXPECT_EQ(in_a_child([] {
                  put_text(user, "a", "v", "y");
                  ::kill(::getpid(), SIGKILL);
                  return 0;
              }),
              1000 + SIGKILL);
    EXPECT_EQ(text_of(user, "a", "v"), "y") << "a change survives the death of its process";
}

TEST(RegistryStore, can_be_used_on_both_sides_of_a_fork) {
    const RegistryScratch scratch;
    const HKEY key = created_key(user, "a");
    EXPECT_EQ(set_text(key, "v", "parent"), 0);
    EXPECT_EQ(in_a_child([&] {
                  if (text_of(key, "v") != "parent") return 1;
                  return set_text(key, "v", "child") == 0 ? 0 : 2;
              }),
              0);
    EXPECT_EQ(text_of(key, "v"), "child");
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST(RegistryStore, can_be_used_in_children_that_are_forked_while_threads_write) {
    const RegistryScratch scratch;
    std::atomic<bool> goes_on = true;
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([&, i] {
            while (goes_on) put_text(user, "a\\" + std::to_string(i), "v", "x");
        });
    }
    for (int i = 0; i < 30; ++i) {
        EXPECT_EQ(in_a_child([] {
                      put_text(user, "child", "v", "y");
                      return text_of(user, "child", "v") == "y" ? 0 : 1;
                  }),
                  0);
    }
    goes_on = false;
    for (std::thread& writer : writers) writer.join();
}

TEST(RegistryStore, that_is_deleted_meanwhile_is_made_anew) {
    const RegistryScratch scratch;
    put_text(user, "a", "v", "x");
    fs::remove_all(scratch.store_directory());
    EXPECT_EQ(status_of_a_use(), 2);
    put_text(user, "a", "v", "y");
    EXPECT_EQ(value_in_a_child(), "y");
}

TEST(RegistryStore, follows_the_directory_that_the_host_names) {
    const RegistryScratch scratch;
    put_text(user, "a", "v", "x");
    winapi::set_configuration_directory(scratch.in("other").c_str());
    EXPECT_EQ(status_of_a_use(), 2);
    put_text(user, "a", "v", "y");
    winapi::set_configuration_directory(scratch.path().c_str());
    EXPECT_EQ(text_of(user, "a", "v"), "x");
}

TEST(RegistryStore, writes_to_the_disk_when_it_is_flushed_or_a_mutex_released) {
    const RegistryScratch scratch;
    const HANDLE mutex = CreateMutexA(nullptr, TRUE, "m");
    put_text(user, "a", "v", "x");
    const int before_release = flushes_to_the_disk;
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(flushes_to_the_disk, before_release + 1);
    EXPECT_TRUE(CloseHandle(mutex));
    put_text(user, "a", "v", "y");
    const int before_flush = flushes_to_the_disk;
    EXPECT_EQ(RegFlushKey(user), 0);
    EXPECT_EQ(flushes_to_the_disk, before_flush + 1);
    EXPECT_EQ(RegFlushKey(user), 0);
    EXPECT_EQ(flushes_to_the_disk, before_flush + 1) << "nothing has changed since";
}

TEST_P(RegistryStore_damaged, is_kept_aside_with_a_failure_and_the_next_use_begins_anew) {
    const RegistryScratch scratch;
    make_large_store();
    run_sql(scratch.store_file(), "PRAGMA wal_checkpoint(TRUNCATE)");
    GetParam().damage(scratch.store_file());
    const std::string damaged = contents_of(scratch.store_file());
    LSTATUS status = status_of_a_use();
    const HKEY key = opened_key(user, "large");
    for (int i = 0; status == 0 && i < 200; ++i) {
        status =
            RegQueryValueExA(key, std::to_string(i).c_str(), nullptr, nullptr, nullptr, nullptr);
    }
    EXPECT_EQ(status, 1015);
    EXPECT_EQ(winapi::registry_store_problem(),
              scratch.store_file() + ": damaged; kept in " + scratch.in("registry.damaged.1"));
    EXPECT_TRUE(contents_of(scratch.in("registry.damaged.1/store.sqlite")) == damaged);
    RegCloseKey(key);
    EXPECT_EQ(status_of_a_use(), 2);
    put_text(user, "a", "v", "new");
    EXPECT_EQ(value_in_a_child(), "new");
}

INSTANTIATE_TEST_SUITE_P(
    each, RegistryStore_damaged,
    testing::Values(
        DamageCase{"by_text_in_its_place",
                   [](const std::string& file) {
                       fs::resize_file(file, 0);
                       overwrite(file, 0, "a text\n");
                   }},
        DamageCase{"in_its_first_bytes", [](const std::string& file) { overwrite(file, 0, "?"); }},
        DamageCase{"in_its_table_of_tables",
                   [](const std::string& file) { overwrite(file, 100, std::string(50, '\xFF')); }},
        DamageCase{"by_the_loss_of_its_end",
                   [](const std::string& file) { fs::resize_file(file, 4096 * 4); }},
        DamageCase{"in_every_page_but_the_first",
                   [](const std::string& file) {
                       const auto size = static_cast<std::size_t>(fs::file_size(file));
                       overwrite(file, 4096, std::string(size - 4096, '\x55'));
                   }}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(RegistryStore, that_lost_its_contents_is_kept_with_its_log) {
    const RegistryScratch scratch;
    make_store();
    fs::resize_file(scratch.store_file(), 0);
    EXPECT_EQ(status_of_a_use(), 1015);
    EXPECT_GT(fs::file_size(scratch.in("registry.damaged.1/store.sqlite-wal")), 0u);
}

TEST(RegistryStore, every_damaged_one_is_kept_under_a_name_of_its_own) {
    const RegistryScratch scratch;
    for (int i = 1; i <= 3; ++i) {
        make_store(std::to_string(i));
        run_sql(scratch.store_file(), "PRAGMA wal_checkpoint(TRUNCATE)");
        overwrite(scratch.store_file(), 0, "?");
        EXPECT_EQ(status_of_a_use(), 1015);
        EXPECT_TRUE(fs::exists(scratch.in("registry.damaged." + std::to_string(i))));
    }
}

TEST(RegistryStore, that_two_processes_find_damaged_is_kept_once_and_the_new_one_stays) {
    const RegistryScratch scratch;
    make_store();
    put_text(user, "a", "v", "open");  // this process has the old file open
    run_sql(scratch.store_file(), "PRAGMA wal_checkpoint(TRUNCATE)");
    overwrite(scratch.store_file(), 0, std::string(4096, '\x55'));
    EXPECT_EQ(in_a_child([] { return status_of_a_use() == 1015 ? 0 : 1; }), 0);
    EXPECT_EQ(in_a_child([] {
                  put_text(user, "a", "v", "new");
                  return 0;
              }),
              0);
    EXPECT_EQ(text_of(user, "a", "v"), "new");
    EXPECT_FALSE(fs::exists(scratch.in("registry.damaged.2")));
}

TEST_P(RegistryStore_foreign, is_refused_and_left_as_it_is) {
    const RegistryScratch scratch;
    if (GetParam().is_from_a_store) {
        make_store();
    } else {
        fs::create_directory(scratch.store_directory());
    }
    run_sql(scratch.store_file(), GetParam().statements);
    run_sql(scratch.store_file(), "PRAGMA wal_checkpoint(TRUNCATE)");
    const std::string before = contents_of(scratch.store_file());
    EXPECT_EQ(status_of_a_use(), 1017);
    EXPECT_EQ(created_key(user, "new"), nullptr);
    EXPECT_EQ(winapi::registry_store_problem(),
              scratch.store_file() + ": another format; expected a registry store of version 1");
    EXPECT_TRUE(contents_of(scratch.store_file()) == before);
}

INSTANTIATE_TEST_SUITE_P(
    each, RegistryStore_foreign,
    testing::Values(
        ForeignCase{"of_another_program", "CREATE TABLE t(x); INSERT INTO t VALUES(1)", false},
        ForeignCase{"of_a_later_version", "PRAGMA user_version=2", true},
        ForeignCase{"with_another_application_number", "PRAGMA application_id=1", true},
        ForeignCase{"with_a_trigger",
                    "CREATE TRIGGER t AFTER INSERT ON entries BEGIN DELETE FROM entries; END",
                    true},
        ForeignCase{"with_another_table", "CREATE TABLE t(x)", true},
        ForeignCase{"without_a_table", "DROP TABLE entries", true}),
    [](const auto& each) { return std::string(each.param.name); });

// Only a forged store has such keys: here the root is below one of its subkeys.
TEST(RegistryStore, with_keys_that_are_below_themselves_is_found_damaged) {
    for (const auto use : {+[] { return SHDeleteKeyA(user, "a"); },
                           +[] { return RegCopyTreeA(user, "a", HKEY_CLASSES_ROOT); },
                           +[] { return created_key(user, "a\\new") == nullptr ? 1015 : 0; }}) {
        const RegistryScratch scratch;
        make_store();
        run_sql(scratch.store_file(),
                "UPDATE keys SET parent = (SELECT number FROM keys WHERE name = 'a') "
                "WHERE number = 2");
        EXPECT_EQ(use(), 1015);
        EXPECT_TRUE(fs::exists(scratch.in("registry.damaged.1")));
    }
}

TEST(RegistryStore, that_is_read_only_can_be_read_and_fails_to_be_written) {
    const RegistryScratch scratch;
    make_store();
    ASSERT_EQ(::chmod(scratch.path().c_str(), 0777), 0);
    ASSERT_EQ(::chmod(scratch.store_directory().c_str(), 0777), 0);
    for (const auto& entry : fs::directory_iterator(scratch.store_directory())) {
        ASSERT_EQ(::chmod(entry.path().c_str(), 0444), 0);
    }
    const std::string before = contents_of(scratch.store_file());
    EXPECT_EQ(without_rights([&] {
                  const HKEY key = opened_key(user, "a");
                  if (text_of(key, "v") != "x") return 1;
                  if (set_text(key, "v", "y") != 5) return 2;
                  if (RegDeleteValueA(key, "v") != 5) return 3;
                  if (RegDeleteKeyA(user, "a") != 5) return 4;
                  if (created_key(user, "new") != nullptr) return 5;
                  if (created_key(user, "a") == nullptr) return 6;
                  return winapi::registry_store_problem() ==
                                 scratch.store_file() +
                                     ": may not be written; expected write permission on the file "
                                     "and its directory"
                             ? 0
                             : 7;
              }),
              0);
    EXPECT_TRUE(contents_of(scratch.store_file()) == before);
}

TEST(RegistryStore, in_a_directory_that_may_not_be_read_fails_with_5) {
    const RegistryScratch scratch;
    make_store();
    EXPECT_EQ(without_rights([] { return status_of_a_use(); }), 5);
}

TEST(RegistryStore, on_a_full_disk_fails_and_keeps_what_it_had) {
    const RegistryScratch scratch;
    make_store();
    EXPECT_EQ(with_little_room(100000,
                               [] {
                                   const HKEY key = opened_key(user, "a");
                                   LSTATUS status = 0;
                                   for (int i = 0; status == 0 && i < 100; ++i) {
                                       status = set_text(key, std::to_string(i).c_str(),
                                                         std::string(5000, 'x'));
                                   }
                                   if (status != 112) return 1;
                                   return text_of(key, "v") == "x" ? 0 : 2;
                               }),
              0);
    EXPECT_EQ(text_of(user, "a", "v"), "x");
    EXPECT_EQ(text_of(user, "a", "0"), std::string(5000, 'x'));
    EXPECT_EQ(text_of(user, "a", "99"), "(result 2)");
    put_text(user, "a", "99", "room again");
}

TEST(RegistryStore, a_failure_of_the_disk_is_reported_as_such) {
    const RegistryScratch scratch;
    put_text(user, "a\\b", "v", "x");
    const HKEY key = opened_key(user, "a");
    const std::pair<int, LSTATUS> failures[] = {
        {ENOSPC, 112}, {EROFS, 19}, {EACCES, 5}, {ENOMEM, 8}};
    for (const auto& [error_number, status] : failures) {
        const Fault fault([error = error_number](std::string_view call, std::string_view) {
            return call.starts_with("registry") ? error : 0;
        });
        EXPECT_EQ(set_text(key, "v", "y"), status);
        EXPECT_EQ(SHDeleteKeyA(user, "a"), status);
    }
    EXPECT_EQ(text_of(user, "a\\b", "v"), "x");
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST(RegistryStore, a_missing_home_is_a_missing_directory) {
    const RegistryScratch scratch;
    const std::string file = scratch.file("file", "x");
    winapi::set_configuration_directory((file + "/below").c_str());
    EXPECT_EQ(status_of_a_use(), 3);
}

TEST(RegistryStore, cut_at_any_length_is_kept_aside_or_read_and_never_overwritten) {
    const RegistryScratch scratch;
    make_store();
    run_sql(scratch.store_file(), "PRAGMA wal_checkpoint(TRUNCATE)");
    const std::string whole = contents_of(scratch.store_file());
    for (std::size_t length = 1; length < whole.size(); length += 1021) {
        fs::remove_all(scratch.store_directory());
        fs::create_directory(scratch.store_directory());
        const std::string file = scratch.file("registry/store.sqlite", whole.substr(0, length));
        const LSTATUS status = status_of_a_use();
        const std::string text = text_of(user, "a", "v");
        const std::string kept = scratch.in("registry.damaged.1");
        const bool is_kept = fs::exists(kept);
        EXPECT_TRUE(is_kept || text == "x") << length << ": " << status << " " << text;
        EXPECT_EQ(fs::file_size(is_kept ? kept + "/store.sqlite" : file), length);
        fs::remove_all(kept);
    }
}
