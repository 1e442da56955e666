// What nmk electrode reports where a part of the work fails, and what it does all the same.

#include <filesystem>
#include <utility>

#include "app/commands/electrode/electrode_runs.h"
#include "child_process.h"
#include "zip_samples.h"

namespace nmk_electrode {
namespace {

namespace fs = std::filesystem;
using nmk_shell::expect_refused;
using nmk_shell::Printed;
using nmk_shell::text_of;
using nmk_electrode_failures = ElectrodeFiles;
using nmk_electrode_progress = ElectrodeFiles;

/// Runs the tool as a user without rights in a directory that anybody may write to, and returns its
/// messages.
std::string refused_without_rights(const ScratchDirectory& scratch, const Words& words) {
    const std::string messages = scratch.path() + "/messages";
    fs::permissions(scratch.path(), fs::perms::all);
    const int code = without_rights([&] {
        const Printed printed = electrode(words);
        std::ofstream(messages) << printed.err;
        return printed.code;
    });
    EXPECT_EQ(code, 2);
    return text_of(messages);
}

/// Follows a bar as the terminal draws it.
class BarWatch : public nmkProgressBreak {
  public:
    int send_progress_bar_to_0(const char*) override {
        range = position = 0;
        return 0;
    }
    void set_range(double whole) override { range = whole; }
    int jump_to(double reached) override {
        position = reached;
        return 0;
    }
    double range = 0, position = 0;
};

}  // namespace

TEST_F(nmk_electrode_failures, name_the_file_that_may_not_be_read) {
    fs::permissions(path("a.ngk"), fs::perms::none);
    Words words = words_with({"create", zip}, {"E"});
    words.insert(words.end(), {"--additional", path("a.ngk"), "--additional", path("g")});
    EXPECT_EQ(refused_without_rights(scratch, words),
              zip + ": not written: \"" + path("a.ngk") + "\": permission denied\n");
    EXPECT_FALSE(fs::exists(zip));
}

TEST_F(nmk_electrode_failures, leave_no_directory_out_that_may_not_be_read) {
    for (const fs::perms permissions : {fs::perms::none, fs::perms::others_read}) {
        fs::permissions(path("data/sub"), permissions);
        Words words = words_with({"create", zip}, {"E"});
        words.insert(words.end(), {"--data", path("data")});
        EXPECT_EQ(refused_without_rights(scratch, words),
                  zip + ": not written: \"" + path("data") + "\": permission denied\n");
        EXPECT_FALSE(fs::exists(zip));
    }
    fs::permissions(path("data/sub"), fs::perms::all);
}

TEST_F(nmk_electrode_failures, are_an_archive_that_shall_hold_itself) {
    ASSERT_EQ(with_entries({"create", zip}, {"E"}).code, 0);
    const std::string before = text_of(zip);
    expect_refused(
        electrode({"create", zip, "--entry", "E", "--geometry", zip, "--metadata", path("m")}),
        zip + ": not written: a file of it is missing now, or is the archive itself");
    EXPECT_EQ(text_of(zip), before);
}

TEST_F(nmk_electrode_failures, are_two_files_for_one_entry) {
    fs::create_directories(path("more/sub"));
    scratch.file("more/sub/2", "another two");
    scratch.file("more/a.ngk", "another");
    const auto refused = [&](const Words& options, const std::string& entry) {
        Words words = words_with({"create", zip}, {"E"});
        words.insert(words.end(), options.begin(), options.end());
        expect_refused(electrode(words), zip + ": not written: two files for the entry \"" + entry +
                                             "\"; expected one");
        EXPECT_FALSE(fs::exists(zip));
    };
    refused({"--data", path("data"), "--data", path("more")}, "E/html/sub/2");
    refused({"--additional", path("a.ngk"), "--additional", path("more/a.ngk")},
            "E/additional/a.ngk");
}

TEST_F(nmk_electrode_failures, of_one_file_do_not_keep_the_others_from_being_extracted) {
    zip_samples::Entry geometry{"E/E.ngk", "g"};
    geometry.check_sum = 1;
    const std::string damaged = scratch.file("z", zip_samples::zip_of({{"version.txt", "1"},
                                                                       {"contents.txt", "E\n"},
                                                                       geometry,
                                                                       {"E/E.xml", "m"},
                                                                       {"E/html/../up", "x"},
                                                                       {"E/html/f", "f"},
                                                                       {"E/additional/h", "h"}}));
    expect_refused(electrode({"extract", damaged, "E", "-o", path("o")}),
                   "electrode \"E\": E.ngk: an entry is damaged; nmk electrode verify names it");
    EXPECT_FALSE(fs::exists(path("o/E.ngk")));
    EXPECT_EQ(text_of(path("o/E.xml")), "m");
    EXPECT_EQ(text_of(path("o/html/f")), "f");
    EXPECT_EQ(text_of(path("o/additional/h")), "h");
}

TEST_F(nmk_electrode_failures, are_of_the_output_directory_where_that_cannot_be_made) {
    ASSERT_EQ(with_entries({"create", zip}, {"E"}).code, 0);
    expect_refused(electrode({"extract", zip, "E", "-o", path("g/o")}),
                   "electrode \"E\": E.ngk: not a directory");
}

TEST_F(nmk_electrode_failures, of_an_impossible_size_are_explained) {
    zip_samples::Entry bomb{"E/E.ngk", "x", 8};
    bomb.size = 4'000'000'000U;
    const std::string bytes = zip_samples::zip_of(
        {{"version.txt", "1"}, {"contents.txt", "E\n"}, bomb, {"E/E.xml", "m"}});
    expect_refused(electrode({"extract", scratch.file("z", bytes), "E", "-o", path("o")}),
                   "E.ngk: a file is too large, or an entry says that it unpacks to more than is "
                   "possible");
}

TEST_F(nmk_electrode_progress, moves_the_bar_to_its_end) {
    Words create = words_with({"create", zip}, {"E"});
    create.insert(create.end(), {"--data", path("data"), "--additional", path("a.ngk")});
    for (const Words& words :
         {create, Words{"verify", zip}, Words{"extract", zip, "E", "-o", path("o")}}) {
        BarWatch bar;
        EXPECT_EQ(electrode_with(bar, words).code, 0) << words[0];
        EXPECT_GT(bar.range, 0) << words[0];
        EXPECT_EQ(bar.position, bar.range) << words[0];
    }
}

TEST_F(nmk_electrode_progress, counts_what_is_added_to_an_archive) {
    ASSERT_EQ(with_entries({"create", zip}, {"E"}).code, 0);
    BarWatch bar;
    EXPECT_EQ(electrode_with(bar, words_with({"add", zip}, {"F"})).code, 0);
    EXPECT_GT(bar.range, 12) << "the archive, and 12 bytes";
    EXPECT_GE(bar.position, 24);
}

TEST(nmk_electrode_list, has_long_names_on_lines_of_their_own_so_that_80_columns_are_enough) {
    const ScratchDirectory scratch;
    const auto list_of = [&](const std::string& name) {
        return electrode({"list", scratch.file("z", zip_samples::zip_of(
                                                        {{"version.txt", "1"},
                                                         {"contents.txt", name},
                                                         {name + "/" + name + ".ngk", "1"},
                                                         {name + "/" + name + ".xml", "22"}}))})
            .out;
    };
    const std::string longest(22, 'n');
    EXPECT_EQ(list_of(longest),
              "electrode               geometry  metadata  data files  bytes  "
              "additional  bytes\n" +
                  longest +
                  "         1         2           0      0           0      0\n"
                  "1 electrode, 4 entries, 26 bytes, version 1\n");
    EXPECT_EQ(list_of(longest + "x"),
              "electrode\n  geometry  metadata  data files  bytes  additional  bytes\n" + longest +
                  "x\n         1         2           0      0           0      0\n"
                  "1 electrode, 4 entries, 27 bytes, version 1\n");
}

TEST(nmk_electrode_list, takes_electrodes_whose_names_begin_with_that_of_another) {
    const ScratchDirectory scratch;
    const std::string zip = scratch.file("z", zip_samples::zip_of({{"version.txt", "1"},
                                                                   {"contents.txt", "a\na/b\n\n"},
                                                                   {"a/a.ngk", "1"},
                                                                   {"a/a.xml", "22"},
                                                                   {"a/b/a/b.ngk", "333"},
                                                                   {"a/b/a/b.xml", "4444"},
                                                                   {"aXhtml/f", "not one of a"},
                                                                   {"/.ngk", "55555"},
                                                                   {"/.xml", "666666"}}));
    EXPECT_EQ(electrode({"list", zip}).out,
              "electrode  geometry  metadata  data files  bytes  additional  bytes\n"
              "a                 1         2           0      0           0      0\n"
              "a/b               3         4           0      0           0      0\n"
              "                  5         6           0      0           0      0\n"
              "3 electrodes, 9 entries, 41 bytes, version 1\n");
}

}  // namespace nmk_electrode
