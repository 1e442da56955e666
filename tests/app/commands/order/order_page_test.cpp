// order_page: the page of `nmk order`, as text and in a browser.

#include "commands/order/order_page.h"

#include <gtest/gtest.h>

#include <set>

#include "app/browser/browser.h"
#include "app/commands/order/picture_fixtures.h"
#include "app/draw/drawn_elements.h"
#include "app/text/plain_syntax.h"

namespace nmk_order {
namespace {

std::size_t count_of(const std::string& text, const std::string& words) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(words, at)) != std::string::npos; ++at) ++count;
    return count;
}

/// Three tools with 12, 8 and 5 holes.
DrawnJob small_job() {
    nmk_job::MachiningJob job = random_job(3, 12, 6);
    std::size_t seen[3] = {};
    constexpr std::size_t kept[3] = {12, 8, 5};
    std::erase_if(job.items, [&](const nmk_job::JobItem& item) {
        return seen[item.tool]++ >= kept[item.tool];
    });
    return DrawnJob(std::move(job));
}

constexpr const char* hostile_name = "</script><img src=x onerror=\"window.broken=1\">'&<b>";

DrawnJob hostile_job() {
    nmk_job::MachiningJob job = random_job(2, 6, 6);
    job.tools[0].name = hostile_name;
    job.tools[1].name = "\"]');window.broken=1;//</style><script>window.broken=1</script>";
    job.file_name = std::string(hostile_name) + ".drl";
    return DrawnJob(std::move(job));
}

TEST(order_page, has_one_heading_and_one_summary) {
    const std::string page = small_job().page();
    EXPECT_EQ(count_of(page, "<h1>"), 1U);
    EXPECT_EQ(count_of(page, "<h2"), 0U);
    EXPECT_EQ(count_of(page, "25 items, 3 tools, sorted by none"), 1U);
    EXPECT_EQ(count_of(page, "random.drl"), 2U);  // the heading and the title of the window
    EXPECT_EQ(count_of(page, ">travel before<"), 1U);
}

TEST(order_page, has_nothing_that_is_loaded_and_a_policy_that_forbids_it) {
    const std::string page = small_job().page();
    EXPECT_NE(page.find("default-src 'none'; style-src 'sha256-"), std::string::npos);
    for (const std::string words : {" src=", " href=", "url(", "@import", "fetch("}) {
        EXPECT_EQ(page.find(words), std::string::npos) << words;
    }
    EXPECT_EQ(count_of(page, "http://"), count_of(page, "\"http://www.w3.org/2000/svg\""));
    EXPECT_EQ(count_of(page, "https://"), 0U);
}

TEST(order_page, hostile_names_stay_text) {
    const std::string page = hostile_job().page();
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(page));
    EXPECT_EQ(count_of(page, "<script"), 1U);
    EXPECT_EQ(count_of(page, "</script>"), 1U);
    EXPECT_EQ(count_of(page, "<img"), 0U);
}

TEST(order_page, every_control_has_a_name) {
    for (const nmk_draw::DrawnElement& element : nmk_draw::drawn_elements(small_job().page())) {
        const bool is_named = !element.value("aria-label").empty();
        const bool is_slider = element.name == "input" && element.value("type") == "range";
        if (is_slider || element.name == "select" || element.name == "ul") {
            EXPECT_TRUE(is_named) << element.name;
        } else if (element.name == "button") {
            EXPECT_TRUE(is_named || !element.text.empty());
        } else if (element.name == "svg") {
            EXPECT_TRUE(is_named || element.value("aria-hidden") == "true");
        }
    }
}

class order_page_in_browser : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = browser::missing()) GTEST_SKIP() << *missing;
    }
};

const std::string view_box = "document.querySelectorAll('svg.panel')[1].getAttribute('viewBox')";
const std::string said = "document.querySelector('.playback output').textContent";
const std::string moves_shown =
    "[...document.querySelectorAll('svg.panel')].map((svg) => "
    "[...svg.querySelectorAll('.travel:not(.ghost) path')].filter((path) => "
    "path.closest('[data-tool]').style.display !== 'none').map((path) => "
    "path.getAttribute('d').split('L').length - 1).reduce((a, b) => a + b, 0))";

TEST_F(order_page_in_browser, fits_into_400_pixels_and_reports_no_error) {
    const std::string beyond =
        "[...document.querySelectorAll('body *')].filter((e) => !e.closest('svg') && "
        "e.getBoundingClientRect().right > innerWidth + 0.5).map((e) => e.outerHTML.slice(0, 80))";
    nmk_job::MachiningJob job = random_job(40, 4, 6);
    job.tools[3].name = std::string(300, 'W');
    job.file_name = std::string(300, 'W') + ".drl";
    const auto lines = browser::drive(
        DrawnJob(job).page(), {400, 800, ""},
        {"document.documentElement.scrollWidth", beyond, "!requests", "!errors",
         "getComputedStyle(document.querySelector('tbody td')).display",
         "getComputedStyle(document.querySelector('tbody td:nth-child(4)'), '::before').content"});
    EXPECT_EQ(lines[0], "400");
    EXPECT_EQ(lines[1], "[]");
    EXPECT_EQ(lines[2], "[]");
    EXPECT_EQ(lines[3], "[]");
    EXPECT_EQ(lines[4], "\"flex\"");
    EXPECT_EQ(lines[5], "\"\\\"travel before, mm\\\"\"");
}

TEST_F(order_page_in_browser, is_light_or_dark_as_the_system) {
    const std::string colours =
        "[getComputedStyle(document.body).backgroundColor, "
        "getComputedStyle(document.querySelector('svg.panel')).filter]";
    const std::string page = small_job().page();
    EXPECT_EQ(browser::drive(page, {}, {colours})[0], "[\"rgb(255, 255, 255)\", \"none\"]");
    EXPECT_EQ(browser::drive(page, {1200, 900, "dark"}, {colours})[0],
              "[\"rgb(20, 24, 29)\", \"invert(0.89) hue-rotate(180deg)\"]");
}

TEST_F(order_page_in_browser, zooms_and_pans_both_panels_with_buttons_wheel_keys_and_pointer) {
    const std::string same =
        "new Set([...document.querySelectorAll('svg.panel')].map((svg) => "
        "svg.getAttribute('viewBox'))).size";
    const std::string box = "(" + view_box + ").split(' ').map(Number)";
    const auto lines = browser::drive(
        small_job().page(), {},
        {"window.whole = " + box,
         "!click button[data-zoom=in]",
         "const a = " + box + "; [Math.abs(whole[2] / a[2] - 1.5) < 0.01, whole[0] < a[0]]",
         same,
         "!drag .view 30 0",
         "const b = " + box + "; [b[0] < a[0], b[1] === a[1], b[2] === a[2]]",
         "!wheel .view -100",
         "const c = " + box + "; c[2] < b[2]",  // it has the focus
         "!key ArrowRight",
         "const d = " + box + "; [d[0] > c[0], d[2] === c[2]]",
         "!key -",
         "const e = " + box + "; e[2] > d[2]",
         "!key 0",
         box + ".every((value, i) => Math.abs(value - whole[i]) < 0.01)",
         same,
         "document.activeElement.blur()",
         "!wheel .view -100",
         box + ".every((value, i) => Math.abs(value - whole[i]) < 0.01)",
         "!wheel .view -100 ctrl",
         box + "[2] < whole[2]",
         "!click button[data-zoom=whole]",
         box + ".every((value, i) => Math.abs(value - whole[i]) < 0.01)"});
    for (const std::size_t line : {7U, 11U, 13U, 17U, 19U, 21U}) {
        EXPECT_EQ(lines[line], "true") << line;
    }
    EXPECT_EQ(lines[2], "[true, true]");
    EXPECT_EQ(lines[3], "1");
    EXPECT_EQ(lines[5], "[true, true, true]");
    EXPECT_EQ(lines[9], "[true, true]");
    EXPECT_EQ(lines[14], "1");
}

TEST_F(order_page_in_browser, marks_keep_their_size_however_far_it_is_zoomed) {
    const std::string size =
        "Math.round(document.querySelector('svg.panel .mark').getBoundingClientRect().width)";
    const auto lines = browser::drive(small_job().page(), {1600, 900, ""},
                                      {"window.size = " + size, "!click button[data-zoom=in]",
                                       "!click button[data-zoom=in]", size + " - size"});
    EXPECT_EQ(lines[3], "0");
}

TEST_F(order_page_in_browser, tools_are_switched_on_and_off_in_drawings_and_playback) {
    const std::string hidden =
        "[...document.querySelectorAll('svg.panel [data-tool]')].filter((e) => "
        "e.style.display === 'none').map((e) => e.dataset.tool)";
    const auto lines = browser::drive(
        small_job().page(), {},
        {hidden + ".length", said, "!click input[data-tool='1']", "[...new Set(" + hidden + ")]",
         said, moves_shown, "document.activeElement.dataset.tool", "!key Space", hidden + ".length",
         "!click button[data-layers=none]", said, "!click button[data-layers=all]", said});
    EXPECT_EQ(lines[0], "0");
    EXPECT_EQ(lines[1], "\"move 22 of 22, T3\"");
    EXPECT_EQ(lines[3], "[\"1\"]");
    EXPECT_EQ(lines[4], "\"move 15 of 15, T3\"");
    EXPECT_EQ(lines[5], "[15, 15]");
    EXPECT_EQ(lines[6], "\"1\"");
    EXPECT_EQ(lines[8], "0");  // the keyboard has switched it on again
    EXPECT_EQ(lines[10], "\"move 0 of 0\"");
    EXPECT_EQ(lines[12], "\"move 22 of 22, T3\"");
}

TEST_F(order_page_in_browser, the_slider_shows_the_moves_up_to_its_number) {
    const std::string slide =
        "(() => { const s = document.querySelector('input[type=range]'); s.focus(); s.value = 12; "
        "s.dispatchEvent(new Event('input')); return s.max; })()";
    const std::string cutter =
        "document.querySelectorAll('svg.panel')[1].querySelector('.cutter').style.display";
    const auto lines = browser::drive(
        small_job().page(), {},
        {moves_shown, cutter, slide, moves_shown, said, cutter,
         "document.querySelector('input[type=range]').getAttribute('aria-valuetext')",
         "!key ArrowLeft", said, moves_shown, "!key Home", moves_shown, said, "!key End",
         moves_shown, cutter});
    EXPECT_EQ(lines[0], "[22, 22]");
    EXPECT_EQ(lines[1], "\"none\"");
    EXPECT_EQ(lines[2], "\"22\"");
    EXPECT_EQ(lines[3], "[12, 12]");
    EXPECT_EQ(lines[4], "\"move 12 of 22, T2\"");
    EXPECT_EQ(lines[5], "\"\"");
    EXPECT_EQ(lines[6], "\"move 12 of 22, T2\"");
    EXPECT_EQ(lines[8], "\"move 11 of 22, T1\"");
    EXPECT_EQ(lines[9], "[11, 11]");
    EXPECT_EQ(lines[11], "[0, 0]");
    EXPECT_EQ(lines[12], "\"move 0 of 22\"");
    EXPECT_EQ(lines[14], "[22, 22]");
    EXPECT_EQ(lines[15], "\"none\"");
}

const std::string finished =
    "new Promise((done) => { const seen = new Set(); const look = () => { "
    "const text = document.querySelector('.playback output').textContent; seen.add(text); "
    "document.querySelector('.playback button').textContent === 'Play' ? done([text, seen.size]) "
    ": setTimeout(look, 5); }; look(); })";

TEST_F(order_page_in_browser, plays_the_order_to_its_end) {
    const auto lines =
        browser::drive(small_job().page(), {},
                       {"document.querySelector('select').value = '4'", "!click .playback button",
                        "document.querySelector('.playback button').textContent", finished,
                        moves_shown, "!click .playback button", "!click .playback button",
                        "document.querySelector('.playback button').textContent"});
    EXPECT_EQ(lines[2], "\"Pause\"");
    EXPECT_TRUE(lines[3].starts_with("[\"move 22 of 22, T3\", ")) << lines[3];
    EXPECT_EQ(lines[4], "[22, 22]");
    EXPECT_EQ(lines[7], "\"Play\"");
}

TEST_F(order_page_in_browser, plays_a_few_still_pictures_where_motion_is_unwanted) {
    const auto lines = browser::drive(
        DrawnJob(random_job(1, 101, 6)).page(), {1200, 900, "still"},
        {"document.querySelector('select').value = '4'", "!click .playback button", finished});
    EXPECT_EQ(lines[2], "[\"move 100 of 100, T1\", 10]");
}

TEST_F(order_page_in_browser, a_hostile_name_runs_nothing_even_where_it_becomes_markup) {
    const auto lines = browser::drive(
        hostile_job().page(), {},
        {"typeof window.broken", said, "document.querySelector('h1').textContent",
         "document.body.insertAdjacentHTML('beforeend', '<p onclick=\"window.broken=1\">x</p>'); "
         "document.body.lastElementChild.click(); const s = document.createElement('script'); "
         "s.textContent = 'window.broken=1'; document.body.append(s); typeof window.broken"});
    EXPECT_EQ(lines[0], "\"undefined\"");
    EXPECT_TRUE(lines[1].starts_with("\"move 10 of 10, \\\"]');window")) << lines[1];
    EXPECT_TRUE(lines[2].starts_with("\"script>")) << lines[2];
    EXPECT_EQ(lines[3], "\"undefined\"");
}

}  // namespace
}  // namespace nmk_order
