// travel_measure: the time of a rapid move, and orders that are made short by a measure.

#include "commands/order/travel_measure.h"

#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "app/commands/order/random_jobs.h"
#include "app/shell/command_runner.h"
#include "commands/order/avoided.h"
#include "commands/order/order_figures.h"
#include "commands/order/order_job.h"
#include "formats/job_files/read_job.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

// Of one order, measured from both of its ends.
constexpr double rounding = 1e-12;

// 100, 50 and 10 mm a second; the limits of reaching them are 10, 5 and 1 mm.
const RapidMoves moves{{6000.0, 3000.0, 600.0}, {1000.0, 500.0, 100.0}};

struct MoveCase {
    const char* name;
    giPoint3 to;  // from 0, 0, 0
    double seconds;
};

std::ostream& operator<<(std::ostream& out, const MoveCase& move) { return out << move.name; }

class rapid_move : public testing::TestWithParam<MoveCase> {};

TEST_P(rapid_move, takes_the_time_of_its_slowest_axis) {
    const MoveCase& move = GetParam();
    const giPoint3 origin(0.0, 0.0, 0.0);
    EXPECT_DOUBLE_EQ(rapid_seconds(origin, move.to, moves), move.seconds);
    EXPECT_DOUBLE_EQ(rapid_seconds(move.to, origin, moves), move.seconds);
}

const MoveCase move_cases[] = {
    {"a_move_of_no_length_takes_no_time", giPoint3(0, 0, 0), 0.0},
    {"a_short_move_brakes_before_it_reaches_the_rate", giPoint3(2.5, 0, 0), 0.1},
    {"both_formulas_agree_at_the_limit", giPoint3(10, 0, 0), 0.2},
    {"a_long_move_adds_one_ramp", giPoint3(-110, 0, 0), 1.2},
    {"the_slower_axis_decides_though_its_way_is_shorter", giPoint3(60, 55, 0), 1.2},
    {"z_has_a_rate_of_its_own", giPoint3(110, 55, 19), 2.0}};

INSTANTIATE_TEST_SUITE_P(moves, rapid_move, testing::ValuesIn(move_cases),
                         [](const auto& tested) { return std::string(tested.param.name); });

nmkTravelAxes a_second(const nmkTravelAxes& a_minute) {
    return {a_minute.x / 60.0, a_minute.y / 60.0, a_minute.z / 60.0};
}

TEST(travel_measure, the_time_of_a_move_is_that_of_the_library) {
    std::mt19937 words(1);
    const auto draw = [&] { return std::ldexp(static_cast<double>(words() % 4096), -6); };
    for (int i = 0; i < 300; ++i) {
        const giPoint3 from(draw(), draw(), draw());
        const giPoint3 to(draw(), draw(), draw());
        nmkTravelProblem problem;
        problem.items.push_back(nmkTravelItem::point(to));
        problem.start = nmkTravelEnd::at_place(from);
        problem.measure = nmkTravelMeasure::time;
        problem.speed = a_second(moves.rate);
        problem.acceleration = moves.acceleration;
        EXPECT_DOUBLE_EQ(rapid_seconds(from, to, moves), nmkTravelOrder(problem).find().length);
    }
}

const nmkTravelMeasure all_kinds[] = {nmkTravelMeasure::length, nmkTravelMeasure::chebyshev,
                                      nmkTravelMeasure::time};

OrderFigures figures_by(const nmk_job::MachiningJob& job, const TravelEnds& ends,
                        const TravelMeasure& measure) {
    OrderRequest request;
    request.ends = ends;
    request.measure = measure;
    return measure_order(job, order_job(job, request, nullptr), measure.rapids);
}

TEST(travel_measure, the_best_order_is_never_longer_than_the_file_by_any_measure) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::mt19937 words(seed);
        const nmk_job::MachiningJob job = random_items(words, 1 + words() % 30, seed % 3 == 0);
        for (const nmkTravelMeasure kind : all_kinds) {
            const ToolFigures total =
                figures_by(job, all_ends[seed % std::size(all_ends)], {kind, moves}).total;
            EXPECT_LE(travel_by(total.after, kind), travel_by(total.before, kind)) << seed;
        }
    }
}

TEST(travel_measure, the_best_order_of_few_items_is_the_shortest_of_all_by_its_measure) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::mt19937 words(seed);
        const nmk_job::MachiningJob job = random_items(words, 1 + words() % 5, seed % 2 == 0);
        const TravelEnds& ends = all_ends[seed % std::size(all_ends)];
        for (const nmkTravelMeasure kind : all_kinds) {
            const TravelMeasure measure{kind, moves};
            const double expected = shortest_travel(job, ends, measure);
            EXPECT_NEAR(travel_by(figures_by(job, ends, measure).total.after, kind), expected,
                        rounding * (1.0 + expected))
                << "seed " << seed << " by " << measure_name(kind);
        }
    }
}

TEST(travel_measure, each_measure_is_shortest_by_itself_on_many_items) {
    std::mt19937 words(17);
    const nmk_job::MachiningJob job = random_items(words, 200, true);
    const RapidMoves slow_in_y{{12000.0, 1500.0, 1500.0}, {2000.0, 200.0, 200.0}};
    TravelFigures by[3];
    for (const nmkTravelMeasure kind : all_kinds) {
        by[static_cast<int>(kind)] = figures_by(job, {}, {kind, slow_in_y}).total.after;
    }
    for (const nmkTravelMeasure own : all_kinds) {
        for (const nmkTravelMeasure other : all_kinds) {
            if (own != other) {
                EXPECT_LT(travel_by(by[static_cast<int>(own)], own),
                          travel_by(by[static_cast<int>(other)], own))
                    << measure_name(own) << " against " << measure_name(other);
            }
        }
    }
}

TEST(travel_measure, a_closed_order_begins_at_the_item_that_is_nearest_by_the_measure) {
    const nmk_job::MachiningJob job =
        job_of({hole(90, 90), hole(60, 60), hole(0, 80), hole(90, 30)});
    const TravelEnds closed{giPoint3(0, 0, 0), {}, true};
    const auto first = [&](nmkTravelMeasure kind) {
        OrderRequest request;
        request.ends = closed;
        request.measure = {kind, {{10000.0, 10000.0, 10000.0}, {1000.0, 50.0, 50.0}}};
        return order_job(job, request, nullptr).after.front().item;
    };
    EXPECT_EQ(first(nmkTravelMeasure::length), 2U);
    EXPECT_EQ(first(nmkTravelMeasure::chebyshev), 1U);
    EXPECT_EQ(first(nmkTravelMeasure::time), 3U);
}

const std::string samples = NMK_SOURCE_DIR "/samples/";

TEST(travel_measure, each_piece_of_a_bent_move_is_a_move_of_its_own_by_time) {
    const auto job = nmk_job_files::read_job_file(samples + "cover_plate.drl", std::nullopt);
    const TravelMeasure measure{nmkTravelMeasure::time, moves};
    const auto avoided = read_avoided(samples + "clamps_for_cover_plate.csv");
    ASSERT_TRUE(job && avoided);
    OrderRequest request;
    request.measure = measure;
    request.ends.avoided = avoided_with(*avoided, measure);
    const OrderedJob ordered = order_job(*job, request, nullptr);
    const OrderFigures figures = measure_order(*job, ordered, measure.rapids);
    EXPECT_LE(figures.total.after.seconds, figures.total.before.seconds);
    ASSERT_GT(figures.total.after.bent_moves, 0U);
    nmkTravelProblem problem = empty_problem(measure);
    problem.keep_outs = (*avoided)->shapes();
    const nmkTravelWays ways(problem);
    double seconds = 0.0;
    for (const OrderRun& run : ordered.runs) {
        each_move(
            job->items, run.of(ordered.after), run.ends,
            [&](const giPoint3& from, const giPoint3& to) { seconds += ways.length(from, to); });
    }
    EXPECT_NEAR(figures.total.after.seconds, seconds, rounding * seconds);
}

class measured_command : public testing::Test {
  protected:
    nmk_shell::Printed order(std::vector<std::string> more) const {
        std::vector<std::string> words = {"order",
                                          folder.file("s.csv", "x,y\n0,0\n30,40\n0,40\n30,0\n")};
        words.insert(words.end(), more.begin(), more.end());
        return nmk_shell::run(words);
    }

    ScratchDirectory folder;
};

TEST_F(measured_command, saved_is_the_saving_of_the_measure) {
    for (const std::string name : {"length", "chebyshev", "time"}) {
        const auto json =
            nlohmann::json::parse(order({"--measure", name, "--rapid", "6000,3000", "--json"}).out);
        const std::string member = name == "length"      ? "travel"
                                   : name == "chebyshev" ? "travel_chebyshev"
                                                         : "seconds";
        EXPECT_EQ(json["measure"], name);
        EXPECT_EQ(json["rapid_mm_per_min"], (nlohmann::json{6000, 3000, 3000}));
        EXPECT_EQ(json["acceleration_mm_per_s2"], (nlohmann::json{1000, 1000, 1000}));
        const double before = json["total"]["before"][member];
        const double after = json["total"]["after"][member];
        EXPECT_LT(after, before);
        EXPECT_DOUBLE_EQ(json["total"]["saved_percent"], (before - after) / before * 100.0);
    }
}

TEST_F(measured_command, the_rates_of_an_inch_file_are_inches) {
    const std::string name =
        folder.file("i.drl", "M48\nINCH,TZ\nT1C0.1\n%\nT1\nX10000Y0\nX20000Y0\nM30\n");
    const auto json = [&](std::vector<std::string> more) {
        std::vector<std::string> words = {"order", name, "--json"};
        words.insert(words.end(), more.begin(), more.end());
        return nlohmann::json::parse(nmk_shell::run(words).out);
    };
    const auto inches = json({"--rapid", "400", "--acceleration", "40"});
    EXPECT_EQ(inches["rapid_mm_per_min"][0], 10160);
    EXPECT_EQ(inches["acceleration_mm_per_s2"][2], 1016);
    EXPECT_EQ(json({"--rapid", "400", "--units", "mm"})["rapid_mm_per_min"][0], 400);
    EXPECT_EQ(json({})["rapid_mm_per_min"][0], 10000);
}

TEST_F(measured_command, the_table_names_the_measure_and_chebyshev_counts_the_longest_axis) {
    const std::string length = order({"--rapid", "6000,3000", "--acceleration", "100"}).out;
    EXPECT_NE(length.find("sorted by best from"), std::string::npos) << length;
    EXPECT_NE(length.find("Rapids at X 6000, Y 3000, Z 3000 mm/min and 100 mm/s2: "),
              std::string::npos)
        << length;
    EXPECT_NE(length.find("130.0  100.0   23.1"), std::string::npos) << length;
    const std::string chebyshev = order({"--measure", "chebyshev"}).out;
    EXPECT_NE(chebyshev.find("sorted by best (chebyshev) from"), std::string::npos) << chebyshev;
    EXPECT_NE(chebyshev.find("110.0  100.0    9.1"), std::string::npos) << chebyshev;
    EXPECT_NE(chebyshev.find("longest axis (Chebyshev)."), std::string::npos) << chebyshev;
}

TEST_F(measured_command, the_picture_has_the_time_of_an_order_made_for_time) {
    const std::string name = folder.path() + "/a.svg";
    ASSERT_EQ(order({"--measure", "time", "--svg", name}).code, 0);
    EXPECT_NE(nmk_shell::text_of(name).find(" mm, 1.1 s, saved "), std::string::npos);
    ASSERT_EQ(order({"--svg", name}).code, 0);
    EXPECT_NE(nmk_shell::text_of(name).find(">travel 100.0 mm, saved 23.1 %<"), std::string::npos);
}

}  // namespace
}  // namespace nmk_order
