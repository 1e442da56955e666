// Full names, the current directory, temporary names and kinds of disks.
#include <limits.h>
#include <sys/vfs.h>
#include <winapi/file_names.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "platform/winapi_fixtures.h"

namespace {

// Changes the current directory for as long as it lives.
class CurrentFolder {
  public:
    explicit CurrentFolder(const std::string& name) {
        m_before = std::filesystem::current_path().string();
        EXPECT_EQ(::chdir(name.c_str()), 0);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() { EXPECT_EQ(::chdir(m_before.c_str()), 0); }

  private:
    std::string m_before;
};

// Sets a variable of the environment, or takes it out, for as long as it lives.
class Variable {
  public:
    Variable(const char* name, const char* value) : m_name(name) {
        const char* before = std::getenv(name);
        m_was_set = before != nullptr;
        m_before = m_was_set ? before : "";
        put(value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { put(m_was_set ? m_before.c_str() : nullptr); }

  private:
    void put(const char* value) {
        value == nullptr ? ::unsetenv(m_name) : ::setenv(m_name, value, 1);
    }
    const char* m_name;
    bool m_was_set;
    std::string m_before;
};

std::string full_name(const std::string& name) {
    char buffer[20000] = "untouched";
    const DWORD length = GetFullPathNameA(name.c_str(), sizeof buffer, buffer, nullptr);
    return std::string(buffer, length);
}

std::string temporary_name(const char* directory, const char* prefix) {
    char* name = _tempnam(directory, prefix);
    std::string result = name == nullptr ? "" : name;
    std::free(name);
    return result;
}

}  // namespace

TEST(GetFullPathNameA, folds_dots_and_stops_at_the_root) {
    struct Case {
        const char* name;
        const char* full;
    };
    for (const Case& c :
         {Case{"/a/b", "/a/b"}, Case{"/a/./b", "/a/b"}, Case{"/a/../b", "/b"}, Case{"/..", "/"},
          Case{"/../../a", "/a"}, Case{"/a/..", "/"}, Case{"/a//b", "/a/b"}, Case{"/a/b/", "/a/b/"},
          Case{"/", "/"}, Case{"/a/b/..", "/a"}, Case{"/a/b/../", "/a/"}, Case{"/...", "/..."},
          Case{"/a. ", "/a. "}, Case{"/a\\b", "/a\\b"}, Case{"///a", "/a"},
          Case{"//srv/sh/a", "//srv/sh/a"}, Case{"//srv/sh/..", "//srv/sh"},
          Case{"//srv/sh/a/../../..", "//srv/sh"}, Case{"//srv", "//srv"}}) {
        EXPECT_EQ(full_name(c.name), c.full) << c.name;
    }
}

TEST(GetFullPathNameA, relative_names_start_at_the_current_directory) {
    const OpenScratchDirectory scratch;
    scratch.directory("sub");
    const CurrentFolder current(scratch.in("sub"));
    const std::string here = std::filesystem::current_path().string();
    const std::string above = here.substr(0, here.rfind('/'));
    EXPECT_EQ(full_name("a"), here + "/a");
    EXPECT_EQ(full_name("."), here);
    EXPECT_EQ(full_name(".."), above);
    EXPECT_EQ(full_name("../x/"), above + "/x/");
    EXPECT_EQ(full_name("C:/a"), here + "/C:/a");
}

TEST(GetFullPathNameA, tells_the_room_that_it_needs_and_leaves_the_buffer) {
    char buffer[] = "xxxxxxxxx";
    char* part = buffer + 1;
    EXPECT_EQ(GetFullPathNameA("/a/bcd", 0, nullptr, nullptr), 7u);
    EXPECT_EQ(GetFullPathNameA("/a/bcd", 6, buffer, &part), 7u);
    EXPECT_STREQ(buffer, "xxxxxxxxx");
    EXPECT_EQ(part, buffer + 1);
    EXPECT_EQ(GetFullPathNameA("/a/bcd", 7, buffer, &part), 6u);
    EXPECT_STREQ(buffer, "/a/bcd");
    EXPECT_EQ(part, buffer + 3);
    EXPECT_EQ(GetFullPathNameA("/a/b/", 7, buffer, &part), 5u);
    EXPECT_EQ(part, nullptr);
}

TEST(GetFullPathNameA, an_empty_name_fails) {
    char buffer[10];
    SetLastError(untouched);
    EXPECT_EQ(GetFullPathNameA("", sizeof buffer, buffer, nullptr), 0u);
    EXPECT_EQ(GetLastError(), 123u);
    EXPECT_EQ(GetFullPathNameA(nullptr, sizeof buffer, buffer, nullptr), 0u);
}

TEST(GetFullPathNameA, names_of_every_length_fit_buffers_of_exactly_their_size) {
    for (std::size_t length = 1; length <= 10000; length += length < 600 ? 1 : 97) {
        const std::string name = "/" + std::string(length - 1, 'x');
        const auto size = static_cast<DWORD>(length);
        const std::unique_ptr<char[]> buffer(new char[length + 1]);
        EXPECT_EQ(GetFullPathNameA(name.c_str(), size, buffer.get(), nullptr), size + 1);
        EXPECT_EQ(GetFullPathNameA(name.c_str(), size + 1, buffer.get(), nullptr), size);
        EXPECT_EQ(buffer.get(), name);
    }
}

TEST(GetFullPathNameA, a_current_directory_that_was_deleted_is_a_failure) {
    const OpenScratchDirectory scratch;
    const std::string removed = scratch.directory("removed");
    EXPECT_EQ(in_a_child([&] {
                  if (::chdir(removed.c_str()) != 0 || ::rmdir(removed.c_str()) != 0) {
                      return 99;
                  }
                  char buffer[300];
                  return GetFullPathNameA("a", sizeof buffer, buffer, nullptr) == 0 &&
                                 _getcwd(buffer, sizeof buffer) == nullptr
                             ? 0
                             : 1;
              }),
              0);
}

TEST(_getcwd, fills_the_buffer_or_says_that_it_is_too_small) {
    const std::string here = std::filesystem::current_path().string();
    std::vector<char> buffer(here.size() + 1);
    EXPECT_EQ(_getcwd(buffer.data(), static_cast<int>(buffer.size())), buffer.data());
    EXPECT_EQ(buffer.data(), here);
    EXPECT_EQ(_getcwd(buffer.data(), static_cast<int>(buffer.size() - 1)), nullptr);
    EXPECT_EQ(errno, ERANGE);
    EXPECT_EQ(_getcwd(buffer.data(), 0), nullptr);
    EXPECT_EQ(errno, EINVAL);
    for (const int size : {0, 1, 5000}) {
        char* allocated = _getcwd(nullptr, size);
        EXPECT_EQ(allocated, here);
        std::free(allocated);
    }
}

TEST(_tempnam, keeps_the_whole_prefix_and_creates_nothing) {
    const OpenScratchDirectory scratch;
    const Variable tmpdir("TMPDIR", scratch.path().c_str());
    const std::string name = temporary_name(nullptr, "nmk_12345_0_long_prefix_");
    EXPECT_TRUE(name.starts_with(scratch.in("nmk_12345_0_long_prefix_"))) << name;
    EXPECT_EQ(name.find_first_not_of("0123456789", scratch.in("nmk_12345_0_long_prefix_").size()),
              name.npos);
    EXPECT_EQ(scratch.file_count(), 0u);
    EXPECT_TRUE(temporary_name(nullptr, nullptr).starts_with(scratch.path() + "/"));
}

TEST(_tempnam, chooses_the_directory_in_order) {
    const OpenScratchDirectory first, second, third;
    const auto directory_of = [](const std::string& name) {
        return name.substr(0, name.rfind('/'));
    };
    {
        const Variable tmpdir("TMPDIR", first.path().c_str());
        const Variable tmp("TMP", second.path().c_str());
        EXPECT_EQ(directory_of(temporary_name(third.path().c_str(), "p")), first.path());
    }
    {
        const Variable tmpdir("TMPDIR", "/no/such/directory");
        const Variable tmp("TMP", second.path().c_str());
        EXPECT_EQ(directory_of(temporary_name(third.path().c_str(), "p")), second.path());
    }
    const Variable tmpdir("TMPDIR", nullptr);
    const Variable tmp("TMP", "");
    EXPECT_EQ(directory_of(temporary_name(third.path().c_str(), "p")), third.path());
    EXPECT_EQ(directory_of(temporary_name(nullptr, "p")), "/tmp");
    EXPECT_EQ(temporary_name("/no/such/directory", "p"), "");
    EXPECT_EQ(errno, ENOENT);
}

TEST(_tempnam, prefixes_that_cannot_be_kept_whole_are_refused) {
    EXPECT_EQ(temporary_name(nullptr, std::string(NAME_MAX, 'p').c_str()), "");
    EXPECT_EQ(errno, ENAMETOOLONG);
    EXPECT_EQ(temporary_name(nullptr, std::string(10000, 'p').c_str()), "");
    EXPECT_EQ(temporary_name(nullptr, "../p"), "");
    EXPECT_EQ(errno, EINVAL);
}

TEST(_tempnam, never_gives_a_name_twice_to_threads_and_processes) {
    constexpr int each = 2000;
    std::mutex guard;
    std::set<std::string> names;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < each; ++j) {
                const std::string name = temporary_name(nullptr, "p");
                const std::lock_guard lock(guard);
                EXPECT_TRUE(names.insert(name).second) << name;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    // A child starts from the same counter.
    const OpenScratchDirectory scratch;
    const std::string list = scratch.in("names");
    EXPECT_EQ(in_a_child([&] {
                  std::ofstream stream(list);
                  for (int j = 0; j < each; ++j) {
                      stream << temporary_name(nullptr, "p") << '\n';
                  }
                  return stream.flush() ? 0 : 1;
              }),
              0);
    for (int j = 0; j < each; ++j) {
        names.insert(temporary_name(nullptr, "p"));
    }
    std::ifstream stream(list);
    std::string name;
    while (std::getline(stream, name)) {
        EXPECT_TRUE(names.insert(name).second) << name;
    }
    EXPECT_EQ(names.size(), 6u * each);
}

TEST(_tempnam, neighbouring_names_cannot_be_foreseen) {
    // The number starts with 20 digits of chance: equal places of two names agree by luck only.
    const std::string a = temporary_name(nullptr, "p");
    const std::string b = temporary_name(nullptr, "p");
    const auto digits_of = [](const std::string& name) {
        return name.substr(name.rfind('/') + 2, 20);
    };
    EXPECT_NE(digits_of(a).substr(4), digits_of(b).substr(4));
}

TEST(GetDriveTypeA, an_ordinary_directory_is_not_remote) {
    const OpenScratchDirectory scratch;
    EXPECT_NE(GetDriveTypeA(scratch.path().c_str()), DRIVE_REMOTE);
    EXPECT_NE(GetDriveTypeA(scratch.path().c_str()), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(GetDriveTypeA(scratch.file("file", "x").c_str()),
              GetDriveTypeA(scratch.path().c_str()));
    EXPECT_EQ(GetDriveTypeA(nullptr), GetDriveTypeA("."));
}

TEST(GetDriveTypeA, what_is_missing_has_no_root) {
    EXPECT_EQ(GetDriveTypeA("/no/such/directory"), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(GetDriveTypeA("Q:\\"), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(GetDriveTypeA(""), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(GetDriveTypeA(std::string(10000, 'x').c_str()), DRIVE_NO_ROOT_DIR);
}

TEST(GetDriveTypeA, two_leading_slashes_mean_remote) {
    EXPECT_EQ(GetDriveTypeA("//server/share"), DRIVE_REMOTE);
    EXPECT_EQ(GetDriveTypeA("//tmp"), DRIVE_REMOTE);
    EXPECT_NE(GetDriveTypeA("///tmp"), DRIVE_REMOTE);
    EXPECT_NE(GetDriveTypeA("/tmp"), DRIVE_REMOTE);
}

TEST(GetDriveTypeA, a_disk_in_memory_is_recognised) {
    struct statfs record;
    constexpr auto tmpfs = 0x01021994;
    if (::statfs("/dev/shm", &record) != 0 || record.f_type != tmpfs) {
        GTEST_SKIP() << "no disk in memory";
    }
    EXPECT_EQ(GetDriveTypeA("/dev/shm"), DRIVE_RAMDISK);
}

TEST(GetDriveTypeA, a_directory_can_be_named_as_remote) {
    const OpenScratchDirectory scratch;
    scratch.directory("remote");
    const std::string neighbour = scratch.directory("remote_not");
    const std::string file = scratch.file("remote/file", "x");
    const std::string symlink = scratch.symlink("link", "remote/file");
    const std::string remote = scratch.in("remote");
    {
        const RemoteDirectory remote_directory(remote);
        EXPECT_EQ(GetDriveTypeA(remote.c_str()), DRIVE_REMOTE);
        EXPECT_EQ(GetDriveTypeA(file.c_str()), DRIVE_REMOTE);
        EXPECT_EQ(GetDriveTypeA(symlink.c_str()), DRIVE_REMOTE);
        EXPECT_NE(GetDriveTypeA(neighbour.c_str()), DRIVE_REMOTE);
    }
    EXPECT_NE(GetDriveTypeA(file.c_str()), DRIVE_REMOTE);
}
