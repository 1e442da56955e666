// Which processes hold a file.
#include <errno.h>
#include <fcntl.h>
#include <filesystem/file_holders.h>
#include <sys/mman.h>

#include <algorithm>
#include <string>
#include <vector>

#include "child_process.h"
#include "holding_child.h"
#include "platform/winapi_fixtures.h"

namespace {

using nmk_filesystem::file_holders;

std::vector<nmk_filesystem::FileHolder> holders_in(int process, const std::string& name) {
    auto holders = file_holders(name.c_str());
    std::erase_if(holders, [process](const auto& holder) { return holder.process != process; });
    return holders;
}

}  // namespace

TEST(file_holders, names_a_child_that_has_the_file_open) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("held \xFF file", "x");
    EXPECT_TRUE(file_holders(file.c_str()).empty());
    {
        int descriptor = -1;
        const HoldingChild child([&] { descriptor = ::open(file.c_str(), O_RDONLY); });
        const auto holders = holders_in(child.process(), file);
        ASSERT_EQ(holders.size(), 1u);
        EXPECT_TRUE(holders[0].held_as.starts_with("fd ")) << holders[0].held_as;
        EXPECT_EQ(holders[0].path, file);
        EXPECT_EQ(holders[0].command, std::string(::program_invocation_short_name).substr(0, 15));
        scratch.symlink("link", file);
        EXPECT_EQ(holders_in(child.process(), scratch.in("link")).size(), 1u);
    }
    EXPECT_TRUE(file_holders(file.c_str()).empty());
}

TEST(file_holders, sees_maps_and_the_current_directory) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("mapped", std::string(5000, 'x'));
    const std::string directory = scratch.directory("directory");
    const HoldingChild child([&] {
        const int descriptor = ::open(file.c_str(), O_RDONLY);
        if (::mmap(nullptr, 5000, PROT_READ, MAP_PRIVATE, descriptor, 0) == MAP_FAILED ||
            ::close(descriptor) != 0 || ::chdir(directory.c_str()) != 0) {
            ::_exit(1);
        }
    });
    const auto mapped = holders_in(child.process(), file);
    ASSERT_EQ(mapped.size(), 1u);
    EXPECT_EQ(mapped[0].held_as, "map");
    EXPECT_EQ(mapped[0].path, file);
    const auto current = holders_in(child.process(), directory);
    ASSERT_EQ(current.size(), 1u);
    EXPECT_EQ(current[0].held_as, "cwd");
}

TEST(file_holders, a_missing_file_has_no_holders) {
    EXPECT_TRUE(file_holders("/no/such/file").empty());
    EXPECT_TRUE(file_holders("").empty());
    EXPECT_TRUE(file_holders(nullptr).empty());
    EXPECT_TRUE(file_holders(std::string(10000, 'x').c_str()).empty());
}

TEST(file_holders, processes_that_come_and_go_do_not_disturb_it) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    const HoldingChild child([&] {
        if (::open(file.c_str(), O_RDONLY) < 0) {
            ::_exit(1);
        }
    });
    for (int i = 0; i < 20; ++i) {
        const HoldingChild other([] {});
        EXPECT_EQ(holders_in(child.process(), file).size(), 1u);
    }
}
