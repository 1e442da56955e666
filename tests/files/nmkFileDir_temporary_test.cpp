// Names that are not in use yet.
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "disk_fault.h"
#include "scratch_directory.h"

namespace {

// The environment's directory for temporary files, for the length of a test.
class TemporaryDirectory {
  public:
    explicit TemporaryDirectory(const std::string& directory) {
        if (const char* value = ::getenv("TMPDIR")) m_before = value;
        ::setenv("TMPDIR", directory.c_str(), 1);
    }
    ~TemporaryDirectory() {
        if (m_before) {
            ::setenv("TMPDIR", m_before->c_str(), 1);
        } else {
            ::unsetenv("TMPDIR");
        }
    }

  private:
    std::optional<std::string> m_before;
};

nmkFileDir temporary(const char* suffix) {
    return nmkFileDir(nmkFileDirTmpFilenameTag, utString(suffix), nullptr);
}

}  // namespace

TEST(nmkFileDir_temporary, the_name_has_the_process_number_and_ends_in_the_suffix) {
    const nmkFileDir name = temporary("_handle.log");
    const std::string file(name.basename_ext().view());
    EXPECT_TRUE(file.starts_with("nmk_" + std::to_string(::getpid()) + "_0_")) << file;
    EXPECT_TRUE(file.ends_with("_handle.log")) << file;
    EXPECT_EQ(name.exist(), 0);
}

TEST(nmkFileDir_temporary, a_null_or_empty_suffix_adds_nothing) {
    EXPECT_TRUE(std::isdigit(static_cast<unsigned char>(temporary(nullptr).get().view().back())));
    EXPECT_TRUE(std::isdigit(static_cast<unsigned char>(temporary("").get().view().back())));
}

TEST(nmkFileDir_temporary, honours_the_directory_of_the_environment) {
    const ScratchDirectory scratch;
    const TemporaryDirectory there(scratch.path());
    nmkFileDir name = temporary(".x");
    EXPECT_EQ(name.up_one(), 1);
    EXPECT_EQ(name.get().view(), scratch.path());
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_temporary, another_name_is_made_when_that_with_the_suffix_exists) {
    std::mutex guard;
    std::vector<std::string> asked;
    // The first two names are there, but may not be looked at.
    const Fault fault([&](std::string_view call, std::string_view name) {
        const std::lock_guard lock(guard);
        if (call != "GetFileAttributesA" || !name.ends_with(".sfx")) return 0;
        asked.emplace_back(name);
        return asked.size() <= 2 ? EACCES : 0;
    });
    const nmkFileDir name = temporary(".sfx");
    ASSERT_EQ(asked.size(), 3U);
    EXPECT_EQ(name.get().view(), asked[2]);
    EXPECT_NE(asked[0].find("_0_"), std::string::npos);
    EXPECT_NE(asked[1].find("_1_"), std::string::npos);
    EXPECT_NE(asked[2].find("_2_"), std::string::npos);
    EXPECT_EQ(std::set<std::string>(asked.begin(), asked.end()).size(), 3U);
}

TEST(nmkFileDir_temporary, gives_up_when_every_name_exists) {
    const Fault fault([](std::string_view call, std::string_view) {
        return call == "GetFileAttributesA" ? EACCES : 0;
    });
    EXPECT_TRUE(temporary(".x").get().is_null());
}

TEST(nmkFileDir_temporary, no_two_threads_get_the_same_name) {
    std::mutex guard;
    std::set<std::string> names;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i) {
                const nmkFileDir name = temporary("");
                const std::lock_guard lock(guard);
                names.emplace(name.get().view());
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(names.size(), 2000U);
}

TEST(nmkFileDir_temporary, a_process_and_its_child_get_different_names_that_cannot_be_guessed) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const std::string name(temporary("").basename_ext().view());
        const bool whole =
            ::write(ends[1], name.data(), name.size()) == static_cast<ssize_t>(name.size());
        ::_exit(whole ? 0 : 1);
    }
    ::close(ends[1]);
    char buffer[256] = "";
    const ssize_t length = ::read(ends[0], buffer, sizeof buffer - 1);
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_GT(length, 0);
    const std::string mine(temporary("").basename_ext().view());
    EXPECT_NE(mine, buffer);
    // Not only the process number distinguishes them.
    EXPECT_NE(mine.substr(mine.rfind('_')),
              std::string(buffer).substr(std::string(buffer).rfind('_')));
}
