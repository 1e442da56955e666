// `nmk order --avoid`, walked leg by leg: the moves of table, JSON and picture keep off every
// keep-out, measured by distances that know nothing of the library.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "app/commands/order/plain_keep_outs.h"
#include "app/draw/drawn_elements.h"
#include "app/formats/job/job_fixtures.h"
#include "app/shell/command_runner.h"
#include "formats/job_files/read_job.h"
#include "real_inputs.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

using Json = nlohmann::json;
using Words = std::vector<std::string>;

giPoint3 point_of(const Json& json) { return {json[0], json[1], json[2]}; }

/// What one run of the command prints and writes.
struct Outputs {
    Json figures, written;
    std::string picture;
};

Outputs outputs_of(const ScratchDirectory& folder, const std::string& file,
                   const PlainKeepOuts& keep_outs, const Words& more) {
    Words words = {"order",
                   file,
                   "--avoid",
                   folder.file("keep_outs.csv", keep_outs.table()),
                   "--json",
                   "-o",
                   folder.path() + "/ordered.json",
                   "--svg",
                   folder.path() + "/ordered.svg",
                   "--effort",
                   "2"};
    words.insert(words.end(), more.begin(), more.end());
    const nmk_shell::Printed printed = nmk_shell::run(words);
    if (printed.code != 0) {
        ADD_FAILURE() << printed.err;
        return {};
    }
    return {Json::parse(printed.out),
            Json::parse(nmk_shell::text_of(folder.path() + "/ordered.json")),
            nmk_shell::text_of(folder.path() + "/ordered.svg")};
}

/// The legs of the new order, rebuilt from the items in their order and the bends in the figures.
class LegWalk {
  public:
    explicit LegWalk(const Outputs& outputs) : m_figures(outputs.figures) {
        for (const Json& move : m_figures["bent_moves"]) {
            const Json& places = move["places"];
            m_bends[key(move["tool"], point_of(places.front()), point_of(places.back()))] = places;
        }
        for (const Json& tool : outputs.written["tools"]) walk(tool["name"], tool["items"]);
    }

    std::vector<std::pair<giPoint3, giPoint3>> pieces;
    double length = 0.0;
    std::size_t bent = 0;

  private:
    using Key = std::tuple<std::string, double, double, double, double>;
    static Key key(const std::string& tool, const giPoint3& from, const giPoint3& to) {
        return {tool, from.x, from.y, to.x, to.y};
    }

    void walk(const std::string& tool, const Json& items) {
        std::optional<giPoint3> at;
        if (!m_figures["start"].is_null()) at = point_of(m_figures["start"]);
        for (const Json& item : items) {
            if (at) leg(tool, *at, point_of(item["start"]));
            at = point_of(item.contains("end") ? item["end"] : item["start"]);
        }
        if (m_figures["closed"]) leg(tool, *at, point_of(items.front()["start"]));
        if (!m_figures["end"].is_null()) leg(tool, *at, point_of(m_figures["end"]));
    }

    void leg(const std::string& tool, const giPoint3& from, const giPoint3& to) {
        const auto found = m_bends.find(key(tool, from, to));
        const Json places = found != m_bends.end()
                                ? found->second
                                : Json::array({{from.x, from.y, from.z}, {to.x, to.y, to.z}});
        for (std::size_t i = 1; i < places.size(); ++i) {
            pieces.emplace_back(point_of(places[i - 1]), point_of(places[i]));
            length += pieces.back().first.distance(pieces.back().second);
        }
        bent += found != m_bends.end() ? 1U : 0U;
    }

    const Json& m_figures;
    std::map<Key, Json> m_bends;
};

/// Each row of the table, and the sum: never longer than in the order of the file.
void expect_not_longer(const Json& figures) {
    for (const Json& row : figures["tools"]) {
        EXPECT_LE(row["after"]["travel"], double(row["before"]["travel"]) * (1.0 + 1e-12))
            << row["tool"];
    }
}

/// Returns the number of legs that bend.
std::size_t expect_legs_off(const Outputs& outputs, const PlainKeepOuts& keep_outs) {
    const LegWalk walk(outputs);
    EXPECT_FALSE(walk.pieces.empty());
    for (const auto& [from, to] : walk.pieces) {
        EXPECT_LE(keep_outs.depth_of(from, to), 0.0)
            << from.x << "," << from.y << " to " << to.x << "," << to.y;
    }
    EXPECT_NEAR(walk.length, outputs.figures["total"]["after"]["travel"], 1e-9 * walk.length);
    EXPECT_EQ(walk.bent, outputs.figures["bent_moves"].size());
    expect_not_longer(outputs.figures);
    return walk.bent;
}

/// The lines of a path, "M1 2L3 4L5 6M7 8L9 10", from place to place.
std::vector<std::pair<giPoint3, giPoint3>> lines_of_path(const std::string& data) {
    std::vector<std::pair<giPoint3, giPoint3>> lines;
    giPoint3 at;
    for (const char* next = data.c_str(); *next != '\0';) {
        const char letter = *next++;
        char* end = nullptr;
        const double x = std::strtod(next, &end);
        const double y = std::strtod(end, &end);
        const giPoint3 to(x, y, 0.0);
        if (letter == 'L') lines.emplace_back(at, to);
        at = to;
        next = end;
    }
    return lines;
}

/// Places of one half of a picture in mm, by the first keep-out that is drawn there.
class PanelScale {
  public:
    PanelScale(const std::string& first_shape, const PlainKeepOut& first) {
        const auto lines = lines_of_path(first_shape);
        giPoint3 low(HUGE_VAL, HUGE_VAL, 0.0);
        giPoint3 high(-HUGE_VAL, -HUGE_VAL, 0.0);
        for (const auto& [from, to] : lines) {
            low = {std::min(low.x, from.x), std::min(low.y, from.y), 0.0};
            high = {std::max(high.x, from.x), std::max(high.y, from.y), 0.0};
        }
        giPoint3 low_mm(HUGE_VAL, HUGE_VAL, 0.0);
        giPoint3 high_mm(-HUGE_VAL, -HUGE_VAL, 0.0);
        for (const giPoint3& p : first.corners) {
            low_mm = {std::min(low_mm.x, p.x), std::min(low_mm.y, p.y), 0.0};
            high_mm = {std::max(high_mm.x, p.x), std::max(high_mm.y, p.y), 0.0};
        }
        m_scale = (high.x - low.x) / (high_mm.x - low_mm.x);
        m_left = low.x - low_mm.x * m_scale;
        m_top = low.y + high_mm.y * m_scale;
    }
    giPoint3 mm(const giPoint3& p) const {
        return {(p.x - m_left) / m_scale, (m_top - p.y) / m_scale, 0.0};
    }
    double scale() const { return m_scale; }

  private:
    double m_scale, m_left, m_top;
};

/// The travel of both halves of a picture keeps off the keep-outs, as far as the drawing is exact.
/// The first keep-out has to be a rectangle.
void expect_drawn_legs_off(const Outputs& outputs, const PlainKeepOuts& keep_outs) {
    ASSERT_GE(keep_outs.all.front().corners.size(), 4U);
    const auto shapes = nmk_draw::drawn_elements(outputs.picture, "path", "keep-out");
    ASSERT_EQ(shapes.size(), 2 * keep_outs.all.size());
    const PanelScale before(shapes.front().value("d"), keep_outs.all.front());
    const PanelScale after(shapes[keep_outs.all.size()].value("d"), keep_outs.all.front());
    // The numbers of a picture have two decimals; the scale is found from some dozen pixels.
    const double rounding = 0.5 / before.scale();
    double drawn[2] = {0.0, 0.0};
    const double middle = (lines_of_path(shapes.front().value("d")).front().first.x +
                           lines_of_path(shapes.back().value("d")).front().first.x) /
                          2.0;
    const auto paths = nmk_draw::drawn_elements(outputs.picture, "path", "travel");
    ASSERT_FALSE(paths.empty());
    for (const nmk_draw::DrawnElement& path : paths) {
        for (const auto& [from, to] : lines_of_path(path.value("d"))) {
            const bool is_after = from.x > middle;
            const PanelScale& scale = is_after ? after : before;
            EXPECT_LE(keep_outs.depth_of(scale.mm(from), scale.mm(to)), rounding)
                << (is_after ? "after, " : "before, ") << from.x << "," << from.y;
            drawn[is_after ? 1 : 0] += scale.mm(from).distance(scale.mm(to));
        }
    }
    const Json& total = outputs.figures["total"];
    EXPECT_NEAR(drawn[0] / double(total["before"]["travel"]), 1.0, 0.02);
    EXPECT_NEAR(drawn[1] / double(total["after"]["travel"]), 1.0, 0.02);
}

/// samples/clamps_for_cover_plate.csv, written down a second time.
PlainKeepOuts clamps_of_cover_plate() {
    const auto rectangle = [](double x0, double y0, double x1, double y1) {
        return PlainKeepOut{{{x0, y0, 0}, {x1, y0, 0}, {x1, y1, 0}, {x0, y1, 0}}, 0.0};
    };
    const auto stop = [](double foot, double neck, double head) {
        return PlainKeepOut{{{foot, 76, 0},
                             {neck, 76, 0},
                             {head, 83, 0},
                             {head, 87, 0},
                             {neck, 94, 0},
                             {foot, 94, 0}},
                            0.0};
    };
    return {5.3,
            {rectangle(41, 178, 54, 212),
             rectangle(266, 178, 279, 212),
             rectangle(41, -12, 54, 24),
             rectangle(266, -12, 279, 24),
             {{{173, 107, 0}}, 5.0},
             stop(-12, 8, 18),
             stop(332, 312, 302)}};
}

const Words all_ends[] = {{},
                          {"--start", "free"},
                          {"--start", "1,105", "--end", "start"},
                          {"--start", "free", "--end", "319,3"},
                          {"--closed"}};

TEST(order_avoid_walk, keeps_table_json_and_picture_of_the_cover_plate_off_its_clamps) {
    const std::string plate = NMK_SOURCE_DIR "/samples/cover_plate.drl";
    const ScratchDirectory folder;
    const PlainKeepOuts clamps = clamps_of_cover_plate();
    for (const Words& ends : all_ends) {
        SCOPED_TRACE(testing::PrintToString(ends));
        const Outputs outputs = outputs_of(folder, plate, clamps, ends);
        EXPECT_GT(expect_legs_off(outputs, clamps), 4U);
        expect_drawn_legs_off(outputs, clamps);
    }
}

TEST(order_avoid_walk, reads_the_clamps_of_the_sample_as_they_are_written_here) {
    const ScratchDirectory folder;
    const std::string plate = NMK_SOURCE_DIR "/samples/cover_plate.drl";
    const Words words = {"order", plate, "--json", "--effort", "1"};
    const auto travel = [&](const std::string& table) {
        Words all = words;
        all.insert(all.end(), {"--avoid", table});
        return Json::parse(nmk_shell::run(all).out)["total"]["after"]["travel"];
    };
    EXPECT_EQ(travel(NMK_SOURCE_DIR "/samples/clamps_for_cover_plate.csv"),
              travel(folder.file("again.csv", clamps_of_cover_plate().table())));
}

TEST(order_avoid_walk, keeps_every_leg_of_the_real_drill_files_off_keep_outs) {
    if (const auto missing = real_inputs::missing("drill")) GTEST_SKIP() << *missing;
    const ScratchDirectory folder;
    int walked = 0;
    std::size_t bent = 0;
    for (const auto& entry : std::filesystem::directory_iterator(real_inputs::path("drill"))) {
        const std::string file = entry.path().string();
        const auto job = nmk_job_files::read_job_file(file, std::nullopt);
        if (!job || job->items.empty() || !job->fences.empty()) continue;
        SCOPED_TRACE(file);
        const PlainKeepOuts keep_outs = KeepOutsBetweenItems(*job, 7).make(8, 0.1);
        ASSERT_GE(keep_outs.all.size(), 4U);
        const Outputs outputs = outputs_of(folder, file, keep_outs, {"--end", "start"});
        bent += expect_legs_off(outputs, keep_outs);
        ++walked;
    }
    EXPECT_GE(walked, 6);
    EXPECT_GT(bent, 30U);
}

/// Holes and slots of two tools on 100 by 80 mm.
nmk_job::MachiningJob random_job_with_slots(unsigned seed) {
    std::mt19937 random(seed);
    const auto draw = [&](double high) {
        return std::floor(high * double(random() % 1000) / 10.0) / 100.0;
    };
    nmk_job::MachiningJob job;
    job.tools.resize(2);
    const std::size_t count = 3 + random() % 30;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = draw(100.0);
        const giPoint3 start(x, draw(80.0), 0.0);
        std::optional<giPoint3> end;
        if (random() % 4 == 0) end = giPoint3(start.x + draw(6.0), start.y + draw(6.0), 0.0);
        job.items.push_back({start, end, static_cast<std::uint32_t>(i % 2)});
    }
    return job;
}

std::string table_of(const nmk_job::MachiningJob& job) {
    std::string text = "x,y,z,x2,y2,z2,tool\n";
    for (const nmk_job::JobItem& item : job.items) {
        const auto place = [](const giPoint3& p) {
            return std::to_string(p.x) + "," + std::to_string(p.y) + ",0,";
        };
        text += place(item.start) + (item.end ? place(*item.end) : ",,,") + "T" +
                std::to_string(item.tool + 1) + "\n";
    }
    return text;
}

TEST(order_avoid_walk, keeps_every_leg_of_random_jobs_off_keep_outs_with_every_kind_of_ends) {
    const ScratchDirectory folder;
    std::size_t bent = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const nmk_job::MachiningJob job = random_job_with_slots(seed);
        const PlainKeepOuts keep_outs = KeepOutsBetweenItems(job, seed).make(5, 0.4);
        if (keep_outs.all.empty()) continue;
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const Words ends[] = {{}, {"--start", "free"}, {"--closed"}, {"--end", "start"}};
        const Outputs outputs = outputs_of(folder, folder.file("job.csv", table_of(job)), keep_outs,
                                           ends[seed % std::size(ends)]);
        bent += expect_legs_off(outputs, keep_outs);
    }
    EXPECT_GT(bent, 100U);
}

}  // namespace
}  // namespace nmk_order
