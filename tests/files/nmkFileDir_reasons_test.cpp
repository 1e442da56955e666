// Why a call returned 0: errno has the reason.
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>

#include "disk_fault.h"
#include "scratch_directory.h"
#include "tree_samples.h"

namespace {

namespace fs = std::filesystem;

class Stopping : public nmkProgressBreak {
  public:
    int jump_to(double) override { return 1; }
};

// Makes a copy of a file that counts as remote, and stops it at once.
int stopped_local_copy(const std::string& directory) {
    put(directory + "/remote/f", "x");
    const RemoteDirectory remote(directory + "/remote");
    nmkFileDir file = named(directory + "/remote/f");
    Stopping progress;
    return file.make_local_file(&progress);
}

struct Failure {
    const char* name;
    std::function<int(const std::string&)> call;  // on a directory with f, full/f and read_only
    int reason;
};

std::ostream& operator<<(std::ostream& stream, const Failure& failure) {
    return stream << failure.name;
}

const Failure failures[] = {
    {"copying_a_missing_file",
     [](const std::string& d) { return named(d + "/none").copy_file(named(d + "/to")); }, ENOENT},
    {"copying_no_name", [](const std::string& d) { return nmkFileDir().copy_file(named(d)); },
     ENOENT},
    {"copying_to_no_name",
     [](const std::string& d) { return named(d + "/f").copy_file(nmkFileDir()); }, ENOENT},
    {"copying_a_directory",
     [](const std::string& d) { return named(d + "/full").copy_file(named(d + "/to")); }, EACCES},
    {"copying_a_file_onto_itself",
     [](const std::string& d) { return named(d + "/f").copy_file(named(d + "/f")); }, EBUSY},
    {"copying_onto_a_read_only_file",
     [](const std::string& d) { return named(d + "/f").copy_file(named(d + "/read_only")); },
     EACCES},
    {"copying_to_a_full_disk",
     [](const std::string& d) {
         const Fault fault("copy part", ENOSPC);
         return named(d + "/f").copy_file(named(d + "/to"));
     },
     ENOSPC},
    {"copying_when_the_flush_fails",
     [](const std::string& d) {
         const Fault fault("fsync", EIO);
         return named(d + "/f").copy_file(named(d + "/to"));
     },
     EIO},
    {"a_local_copy_that_is_stopped", &stopped_local_copy, ECANCELED},
    {"a_local_copy_of_a_missing_file",
     [](const std::string& d) { return named(d + "/none").make_local_file(nullptr); }, ENOENT},
    {"a_local_copy_that_is_not_needed",
     [](const std::string& d) { return named(d + "/f").make_local_file(nullptr); }, 0},
    {"renaming_onto_an_existing_file",
     [](const std::string& d) { return named(d + "/f").rename_file((d + "/read_only").c_str()); },
     EEXIST},
    {"renaming_to_null", [](const std::string& d) { return named(d + "/f").rename_file(nullptr); },
     ENOENT},
    {"creating_a_directory_below_a_file",
     [](const std::string& d) { return named(d + "/f/d").mkdir(); }, ENOTDIR},
    {"creating_a_directory_with_too_long_a_name",
     [](const std::string& d) { return named(d + "/" + std::string(300, 'x') + "/d").mkdir(); },
     ENAMETOOLONG},
    {"removing_a_directory_with_entries",
     [](const std::string& d) { return named(d + "/full").rmdir(); }, ENOTEMPTY},
    {"deleting_a_read_only_file",
     [](const std::string& d) { return named(d + "/read_only").delete_file(); }, EACCES},
    {"deleting_a_read_only_file_in_two_attempts",
     [](const std::string& d) { return named(d + "/read_only").delete_file(2, 0); }, EACCES},
    {"deleting_in_no_attempts",
     [](const std::string& d) { return named(d + "/f").delete_file(0, 0); }, 0},
    {"deleting_a_tree_with_a_read_only_file",
     [](const std::string& d) { return named(d).delete_tree(); }, EACCES},
    {"deleting_a_tree_of_which_the_disk_refuses_a_file",
     [](const std::string& d) {
         const Fault fault("remove", EIO);
         return named(d + "/full").delete_tree();
     },
     EIO},
};

class nmkFileDir_reasons : public testing::TestWithParam<Failure> {};

}  // namespace

TEST_P(nmkFileDir_reasons, are_in_errno_after_a_call_that_returns_0) {
    const ScratchDirectory scratch;
    scratch.file("f", "x");
    put(scratch.path() + "/full/f", "x");
    fs::permissions(scratch.file("read_only", "x"), fs::perms::owner_read);
    errno = -1;
    EXPECT_EQ(GetParam().call(scratch.path()), 0);
    EXPECT_EQ(errno, GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(calls, nmkFileDir_reasons, testing::ValuesIn(failures),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(nmkFileDir, that_is_not_set_is_an_empty_std_string) {
    EXPECT_EQ(nmkFileDir().str(), "");
    EXPECT_EQ(named("a/b").str(), "a/b");
    EXPECT_EQ(named("d\\\xFF").str(), "d/\xFF");
}
