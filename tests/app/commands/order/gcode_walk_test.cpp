// G-code of `nmk order`, walked by a reader that knows nothing of the writer: on real drill files,
// on random jobs, with keep-outs.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/commands/order/plain_keep_outs.h"
#include "app/formats/gcode/walked_program.h"
#include "app/formats/job/job_fixtures.h"
#include "app/shell/command_runner.h"
#include "formats/job_files/read_job.h"
#include "real_inputs.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

using nmk_gcode::ProgramMove;
using nmk_gcode::WalkedProgram;
using Words = std::vector<std::string>;

constexpr double rounding = 2e-4;  // mm; of four decimals in mm, and five in inches
constexpr double depth = 1.75;     // mm
constexpr double retract = 4.0;    // mm

bool is_same(const giPoint3& a, const giPoint3& b) {
    return std::fabs(a.x - b.x) <= rounding && std::fabs(a.y - b.y) <= rounding &&
           std::fabs(a.z - b.z) <= rounding;
}

bool is_same_in_plane(const giPoint3& a, const giPoint3& b) {
    return is_same({a.x, a.y, 0.0}, {b.x, b.y, 0.0});
}

struct ProgramCut {
    int tool;
    giPoint3 begin, end;  // at the bottom
    bool is_found = false;
};

/// The cuts of a program; checks how the tool comes to each and leaves it.
std::vector<ProgramCut> cuts_of(const WalkedProgram& program) {
    std::vector<ProgramCut> cuts;
    bool is_down = false;
    for (const ProgramMove& move : program.moves) {
        if (!move.is_rapid) {
            EXPECT_GT(move.feed, 0.0);
            if (!is_down) {
                EXPECT_TRUE(is_same_in_plane(move.from, move.to)) << "a plunge is straight down";
                EXPECT_NEAR(move.from.z, retract, rounding);
                cuts.push_back({move.tool, move.to, move.to});
            }
            cuts.back().end = move.to;
            is_down = true;
            continue;
        }
        EXPECT_GE(move.to.z, retract - rounding) << "no rapid goes below the retract height";
        if (is_down) {
            EXPECT_TRUE(is_same_in_plane(move.from, move.to)) << "a tool leaves straight up";
        } else if (!move.is_from_unknown && move.from.z < retract - rounding) {
            EXPECT_TRUE(is_same_in_plane(move.from, move.to)) << "a rapid below the retract height";
        }
        is_down = false;
    }
    EXPECT_FALSE(is_down);
    return cuts;
}

/// Each item of the job is cut once, by its tool, to its depth; nothing else is cut.
void expect_each_cut_once(const nmk_job::MachiningJob& job, std::vector<ProgramCut> cuts) {
    ASSERT_EQ(cuts.size(), job.items.size());
    for (const nmk_job::JobItem& item : job.items) {
        const giPoint3 start(item.start.x, item.start.y, item.start.z - depth);
        const giPoint3& other = item.end.value_or(item.start);
        const giPoint3 end(other.x, other.y, other.z - depth);
        const auto found = std::find_if(cuts.begin(), cuts.end(), [&](const ProgramCut& cut) {
            return !cut.is_found && "T" + std::to_string(cut.tool) == job.tools[item.tool].name &&
                   ((is_same(cut.begin, start) && is_same(cut.end, end)) ||
                    (is_same(cut.begin, end) && is_same(cut.end, start)));
        });
        ASSERT_NE(found, cuts.end()) << start.x << "," << start.y;
        found->is_found = true;
    }
}

/// Returns the number of rapids that end where no cut begins: start, end and bends.
std::size_t expect_rapids_off(const WalkedProgram& program, const PlainKeepOuts& keep_outs) {
    std::size_t others = 0;
    for (std::size_t i = 0; i < program.moves.size(); ++i) {
        const ProgramMove& move = program.moves[i];
        if (!move.is_rapid || move.is_from_unknown) continue;
        EXPECT_LE(keep_outs.depth_of(move.from, move.to), 0.0)
            << move.from.x << "," << move.from.y << " to " << move.to.x << "," << move.to.y;
        others += i + 1 < program.moves.size() && program.moves[i + 1].is_rapid ? 1U : 0U;
    }
    return others;
}

std::string heights_in(nmk_job::JobUnits units, double mm) {
    return std::to_string(mm / nmk_job::mm_of(units));
}

WalkedProgram program_of(const ScratchDirectory& folder, const std::string& file,
                         nmk_job::JobUnits units, const Words& more) {
    Words words = {"order",
                   file,
                   "-o",
                   folder.path() + "/ordered.nc",
                   "--quiet",
                   "--effort",
                   "1",
                   "--depth",
                   heights_in(units, depth),
                   "--retract",
                   heights_in(units, retract),
                   "--plunge-feed",
                   "80",
                   "--feed",
                   "160"};
    words.insert(words.end(), more.begin(), more.end());
    const nmk_shell::Printed printed = nmk_shell::run(words);
    EXPECT_EQ(printed.code, 0) << printed.err;
    return nmk_gcode::walked(nmk_shell::text_of(folder.path() + "/ordered.nc"));
}

TEST(order_gcode_walk, cuts_every_item_of_the_real_drill_files_once_and_keeps_off_keep_outs) {
    if (const auto missing = real_inputs::missing("drill")) GTEST_SKIP() << *missing;
    const ScratchDirectory folder;
    std::map<nmk_job::JobUnits, int> walked;
    std::size_t bends = 0;
    for (const auto& entry : std::filesystem::directory_iterator(real_inputs::path("drill"))) {
        const std::string file = entry.path().string();
        const auto job = nmk_job_files::read_job_file(file, std::nullopt);
        if (!job || job->has_fixed_parts) continue;
        SCOPED_TRACE(file);
        const PlainKeepOuts keep_outs = KeepOutsBetweenItems(*job, 3).make(8, 0.1);
        ASSERT_GE(keep_outs.all.size(), 4U);
        const std::string table = folder.file("keep_outs.csv", keep_outs.table());
        const WalkedProgram with =
            program_of(folder, file, job->units, {"--avoid", table, "--end", "start"});
        expect_each_cut_once(*job, cuts_of(with));
        bends += expect_rapids_off(with, keep_outs) - 2 * job->tools.size();
        const WalkedProgram without = program_of(folder, file, job->units, {});
        expect_each_cut_once(*job, cuts_of(without));
        EXPECT_EQ(with.stops, static_cast<int>(job->tools.size()));
        EXPECT_EQ(with.ends, 1);
        ++walked[job->units];
    }
    EXPECT_GE(walked[nmk_job::JobUnits::millimetres], 2);
    EXPECT_GE(walked[nmk_job::JobUnits::inches], 2);
    EXPECT_GT(bends, 30U);
}

TEST(order_gcode_walk, refuses_the_real_drill_files_with_routed_paths) {
    if (const auto missing = real_inputs::missing("drill")) GTEST_SKIP() << *missing;
    const ScratchDirectory folder;
    int refused = 0;
    for (const auto& entry : std::filesystem::directory_iterator(real_inputs::path("drill"))) {
        const std::string file = entry.path().string();
        const auto job = nmk_job_files::read_job_file(file, std::nullopt);
        if (!job || !job->has_fixed_parts) continue;
        const std::string output = folder.path() + "/ordered.nc";
        nmk_shell::expect_refused(
            nmk_shell::run({"order", file, "-o", output, "--depth", "1", "--retract", "1",
                            "--plunge-feed", "80", "--feed", "99", "--allow-empty"}),
            file + ": cannot write G-code: routed paths and patterns");
        EXPECT_FALSE(std::filesystem::exists(output));
        ++refused;
    }
    EXPECT_GE(refused, 2);
}

TEST(order_gcode_walk, cuts_the_cover_plate_around_its_clamps_with_every_kind_of_ends) {
    const std::string plate = NMK_SOURCE_DIR "/samples/cover_plate.drl";
    const auto job = nmk_job::job_of(nmk_job_files::read_job_file(plate, std::nullopt));
    // A few of the clamps, as circles within them.
    const PlainKeepOuts within{
        5.3, {{{{173, 107, 0}}, 5.0}, {{{47.5, 185, 0}}, 6.5}, {{{272.5, 17, 0}}, 6.5}}};
    const ScratchDirectory folder;
    for (const Words& ends : {Words{}, Words{"--start", "free"}, Words{"--closed"},
                              Words{"--across-tools", "--start", "1,105", "--end", "start"}}) {
        SCOPED_TRACE(testing::PrintToString(ends));
        Words words = {"--avoid", NMK_SOURCE_DIR "/samples/clamps_for_cover_plate.csv"};
        words.insert(words.end(), ends.begin(), ends.end());
        const WalkedProgram program = program_of(folder, plate, job.units, words);
        expect_each_cut_once(job, cuts_of(program));
        EXPECT_GT(expect_rapids_off(program, within), 20U);
        EXPECT_TRUE(program.stops_exactly);
    }
}

/// Holes and slots of two tools at heights up to 3 mm.
std::string random_table(std::mt19937& random) {
    const auto draw = [&](unsigned hundredths) {
        return std::to_string(static_cast<double>(random() % hundredths) / 100.0);
    };
    std::string text = "x,y,z,x2,y2,z2,tool\n";
    const std::size_t count = 1 + random() % 25;
    for (std::size_t i = 0; i < count; ++i) {
        text += draw(10000) + "," + draw(8000) + "," + draw(300) + ",";
        const bool is_slot = random() % 3 == 0;
        text += is_slot ? draw(10000) + "," + draw(8000) + "," + draw(300) : ",,";
        text += ",T" + std::to_string(1 + i % 2) + "\n";
    }
    return text;
}

TEST(order_gcode_walk, cuts_every_item_of_random_jobs_once) {
    const ScratchDirectory folder;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        const std::string file = folder.file("job.csv", random_table(random));
        const auto job =
            nmk_job::job_of(nmk_job_files::read_job_file(file, nmk_job::JobUnits::millimetres));
        const auto units = nmk_job::JobUnits::millimetres;
        const WalkedProgram program = program_of(folder, file, units, {});
        expect_each_cut_once(job, cuts_of(program));
        const Words across = {"--across-tools", "--start", "free"};
        expect_each_cut_once(job, cuts_of(program_of(folder, file, units, across)));
    }
}

}  // namespace
}  // namespace nmk_order
