// Several processes at work on the same tree at once: nothing else is lost, and all come to an end.
#include <nmktoolbox/files/nmkFileDir.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "files/tree_samples.h"
#include "scratch_directory.h"

namespace {

namespace fs = std::filesystem;

using Tree = std::map<std::string, std::string>;

// A process that runs beside the test; the end of the test waits for it.
class BesideProcess {
  public:
    explicit BesideProcess(const std::function<bool()>& work) : m_process(::fork()) {
        if (m_process == 0) ::_exit(work() ? 0 : 1);
    }
    BesideProcess(const BesideProcess&) = delete;
    BesideProcess& operator=(const BesideProcess&) = delete;
    ~BesideProcess() {
        if (m_process > 0) succeeds();
    }

    bool succeeds() {
        int status = 0;
        const pid_t waited_for = ::waitpid(m_process, &status, 0);
        m_process = 0;
        return waited_for > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

  private:
    pid_t m_process;
};

// What both processes copy from, with symlinks that lead to what must stay.
void make_source(const std::string& top) {
    put(top + "/kept/precious", "precious");
    for (const char* directory : {"/source/a", "/source/a/deep", "/source/b"}) {
        for (int i = 0; i < 8; ++i) {
            put(top + directory + "/file " + std::to_string(i), std::string(2000, 'x'));
        }
    }
    fs::create_directory_symlink("../../kept", top + "/source/symlink");
}

}  // namespace

TEST(nmkFileDir_processes, two_that_copy_and_delete_the_same_tree_lose_nothing_else) {
    const ScratchDirectory scratch;
    make_source(scratch.path());
    const Tree before = tree(scratch.path());
    const auto copy_and_delete = [&](int rounds) {
        const nmkFileDir source = named(scratch.path() + "/source");
        for (int round = 0; round < rounds; ++round) {
            named(scratch.path() + "/shared").mkdir();
            source.copy_dir(named(scratch.path() + "/shared"));
            named(scratch.path() + "/shared").delete_tree();
        }
        return true;
    };
    BesideProcess other([&] { return copy_and_delete(40); });
    copy_and_delete(40);
    EXPECT_TRUE(other.succeeds());
    EXPECT_EQ(named(scratch.path() + "/shared").delete_tree(), 1);
    EXPECT_EQ(tree(scratch.path()), before);
}

TEST(nmkFileDir_processes, a_copy_of_what_another_deletes_has_whole_files_only) {
    const ScratchDirectory scratch;
    for (int round = 0; round < 10; ++round) {
        make_source(scratch.path());
        BesideProcess other([&] { return named(scratch.path() + "/source").delete_tree() == 1; });
        named(scratch.path() + "/source").copy_dir(named(scratch.path() + "/copies"));
        EXPECT_TRUE(other.succeeds());
        if (fs::exists(scratch.path() + "/copies/source")) {
            for (const auto& [name, what] : tree(scratch.path() + "/copies/source")) {
                EXPECT_TRUE(what[0] != '=' || what == "=" + std::string(2000, 'x')) << name;
            }
        }
        EXPECT_EQ(named(scratch.path() + "/copies").delete_tree(), 1);
        EXPECT_EQ(tree(scratch.path()), (Tree{{"kept", "/"}, {"kept/precious", "=precious"}}));
    }
}

TEST(nmkFileDir_processes, two_that_delete_what_another_fills_continue_until_it_is_deleted) {
    const ScratchDirectory scratch;
    const std::string shared = scratch.path() + "/shared";
    BesideProcess fills([&] {
        for (int i = 0; i < 300; ++i) {
            const std::string directory = shared + "/" + std::to_string(i % 7);
            named(directory).mkdir();
            const nmkFileDir file = named(directory + "/file");
            if (std::FILE* stream = std::fopen(file.get().c_str(), "w")) std::fclose(stream);
        }
        return true;
    });
    const auto deletes = [&] {
        for (int i = 0; i < 100; ++i) named(shared).delete_tree();
        return true;
    };
    BesideProcess other(deletes);
    deletes();
    EXPECT_TRUE(fills.succeeds());
    EXPECT_TRUE(other.succeeds());
    EXPECT_EQ(named(shared).delete_tree(3, 1), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}
