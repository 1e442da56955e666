// A violation of each kind of arrow, planted in a tree that is clean without it.
#include <gtest/gtest.h>

#include "house/small_tree.h"

namespace {

class include_arrows_catches : public testing::TestWithParam<Violation> {};

TEST_P(include_arrows_catches, it) { expect_caught(nmk_house::include_arrows, GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    cases, include_arrows_catches,
    testing::Values(
        Violation{"a_platform_library_that_includes_the_toolbox",
                  "platform/base/include/base/number.h", "#include <nmktoolbox/lower.h>\n",
                  "platform/base/include/base/number.h:1: includes include/nmktoolbox/lower.h"},
        Violation{"a_platform_library_that_includes_the_tool", "platform/base/source/number.cpp",
                  "\n#include \"shell/run.h\"\n",
                  "platform/base/source/number.cpp:2: includes app/shell/run.h"},
        Violation{"a_platform_library_that_includes_one_it_does_not_need",
                  "platform/solid/include/solid/solid.h", "#include <apart/apart.h>\n",
                  "platform/solid/include/solid/solid.h:1: includes platform/apart/include/"},
        Violation{"a_platform_library_that_includes_one_above_it",
                  "platform/base/include/base/number.h", "#include <solid/solid.h>\n",
                  "platform/base/include/base/number.h:1: includes platform/solid/include/"},
        Violation{"a_private_header_of_another_platform_library",
                  "platform/solid/include/solid/solid.h", "#include \"digits.h\"\n",
                  "platform/solid/include/solid/solid.h:1: includes platform/base/source/"},
        Violation{"a_public_platform_header_that_includes_a_private_one",
                  "platform/base/include/base/number.h", "#include \"../../source/digits.h\"\n",
                  "platform/base/include/base/number.h:1: includes platform/base/source/"},
        Violation{"a_subsystem_that_includes_one_it_does_not_build_on", "source/lower/nmkLow.cpp",
                  "#include <nmktoolbox/upper/nmkHigh.h>\n",
                  "source/lower/nmkLow.cpp:1: includes include/nmktoolbox/upper/nmkHigh.h"},
        Violation{"an_umbrella_header_of_a_subsystem_it_does_not_build_on",
                  "source/lower/nmkLow.cpp", "#include <nmktoolbox/upper.h>\n",
                  "source/lower/nmkLow.cpp:1: includes include/nmktoolbox/upper.h"},
        Violation{"the_header_of_the_whole_library_within_it", "source/upper/nmkHigh.cpp",
                  "#include <nmktoolbox.h>\n",
                  "source/upper/nmkHigh.cpp:1: includes include/nmktoolbox.h"},
        Violation{"a_public_header_of_a_subsystem_it_does_not_build_on",
                  "include/nmktoolbox/lower/nmkLow.h", "#  include \"nmktoolbox/upper.h\"\n",
                  "include/nmktoolbox/lower/nmkLow.h:1: includes include/nmktoolbox/upper.h"},
        Violation{"a_quoted_private_header_of_a_subsystem_it_builds_on", "source/upper/nmkHigh.cpp",
                  "#include \"lower/lattice.h\"\n",
                  "source/upper/nmkHigh.cpp:1: includes source/lower/lattice.h"},
        Violation{"a_private_header_between_angle_brackets", "source/upper/nmkHigh.cpp",
                  "#include <lower/lattice.h>\n",
                  "source/upper/nmkHigh.cpp:1: includes source/lower/lattice.h"},
        Violation{"a_private_header_by_a_path_through_the_parent", "source/upper/nmkHigh.cpp",
                  "#include \"../lower/lattice.h\"\n",
                  "source/upper/nmkHigh.cpp:1: includes source/lower/lattice.h"},
        Violation{"a_public_header_that_includes_a_private_one",
                  "include/nmktoolbox/lower/nmkLow.h", "#include \"lower/lattice.h\"\n",
                  "include/nmktoolbox/lower/nmkLow.h:1: includes source/lower/lattice.h"},
        Violation{"a_private_header_of_a_platform_library", "source/lower/nmkLow.cpp",
                  "#include \"digits.h\"\n",
                  "source/lower/nmkLow.cpp:1: includes platform/base/source/digits.h"},
        Violation{"shared_arithmetic_that_includes_a_subsystem", "source/exact/power.h",
                  "#include \"lower/lattice.h\"\n",
                  "source/exact/power.h:1: includes source/lower/lattice.h"},
        Violation{"the_library_that_includes_the_tool", "source/lower/nmkLow.cpp",
                  "#include \"text/digits.h\"\n",
                  "source/lower/nmkLow.cpp:1: includes app/text/digits.h"},
        Violation{"the_library_that_includes_the_tests", "source/lower/nmkLow.cpp",
                  "#include \"lower/plain_low.h\"\n",
                  "source/lower/nmkLow.cpp:1: includes tests/lower/plain_low.h"},
        Violation{"more_than_the_pair_that_has_a_row", "source/lower/nmkPair.cpp",
                  "#include <nmktoolbox/upper/nmkHigh.h>\n",
                  "source/lower/nmkPair.cpp:1: includes include/nmktoolbox/upper/nmkHigh.h"},
        Violation{"the_tool_that_includes_a_private_header", "app/commands/order/order.h",
                  "#include \"lower/lattice.h\"\n",
                  "app/commands/order/order.h:1: includes source/lower/lattice.h"},
        Violation{"a_command_that_includes_another_command", "app/commands/order/order.h",
                  "#include \"commands/route/route.h\"\n",
                  "app/commands/order/order.h:1: includes app/commands/route/route.h"},
        Violation{"a_format_that_includes_a_command", "app/formats/csv/csv.h",
                  "#include \"commands/order/order.h\"\n",
                  "app/formats/csv/csv.h:1: includes app/commands/order/order.h"},
        Violation{"a_picture_that_includes_a_command", "app/draw/picture.h",
                  "#include \"commands/route/route.h\"\n",
                  "app/draw/picture.h:1: includes app/commands/route/route.h"},
        Violation{"a_picture_that_includes_the_shell", "app/draw/picture.h",
                  "#include \"shell/run.h\"\n", "app/draw/picture.h:1: includes app/shell/run.h"},
        Violation{"the_shell_that_includes_a_command", "app/shell/run.h",
                  "#include \"commands/route/route.h\"\n",
                  "app/shell/run.h:1: includes app/commands/route/route.h"},
        Violation{"a_leaf_that_includes_the_shell", "app/text/digits.h",
                  "#include \"shell/run.h\"\n", "app/text/digits.h:1: includes app/shell/run.h"},
        Violation{"a_test_that_includes_a_private_header_of_another_subsystem",
                  "tests/lower/nmkLow_test.cpp", "#include \"upper/rows.h\"\n",
                  "tests/lower/nmkLow_test.cpp:1: includes source/upper/rows.h"},
        Violation{"a_test_of_the_library_that_includes_the_tool", "tests/lower/nmkLow_test.cpp",
                  "#include \"text/digits.h\"\n",
                  "tests/lower/nmkLow_test.cpp:1: includes app/text/digits.h"},
        Violation{"an_include_after_a_comment", "source/lower/nmkLow.cpp",
                  "/* two\nlines */ #include \"upper/rows.h\"\n",
                  "source/lower/nmkLow.cpp:2: includes source/upper/rows.h"},
        Violation{"an_include_of_a_macro", "source/lower/nmkLow.cpp", "#include HEADER\n",
                  "source/lower/nmkLow.cpp:1: an #include of a macro"},
        Violation{"a_directory_without_a_row", "source/newcomer/nmkNew.cpp", "",
                  "source/newcomer/nmkNew.cpp: no row"},
        Violation{"a_room_of_the_tool_without_a_row", "app/helpers/helpers.h", "",
                  "app/helpers/helpers.h: no row"}),
    ViolationName());

TEST(include_arrows, a_later_subsystem_needs_only_its_rows) {
    const SmallTree tree;
    const std::string page = tree.text("ARCHITECTURE.md");
    tree.write("ARCHITECTURE.md", page + "| `archive` | later | `upper` |\n");
    tree.write("source/archive/nmkArchive.cpp", "#include <nmktoolbox/upper.h>\n");
    EXPECT_EQ(nmk_house::include_arrows(tree.root()), nmk_house::Findings());
}

TEST(include_arrows, tables_that_were_lost_are_found_missing) {
    const SmallTree tree;
    tree.write("ARCHITECTURE.md", "# Architecture\n");
    tree.write("platform/CMakeLists.txt", "");
    const nmk_house::Findings findings = nmk_house::include_arrows(tree.root());
    ASSERT_GE(findings.size(), 3U);
    EXPECT_EQ(findings[0], "ARCHITECTURE.md: no table with a column may include");
    EXPECT_EQ(findings[1], "ARCHITECTURE.md: no table with a column builds on");
    EXPECT_EQ(findings[2], "platform/CMakeLists.txt: no nmk_platform_library");
}

TEST(include_arrows, a_subsystem_that_builds_on_an_unknown_one_is_found) {
    const SmallTree tree;
    const std::string page = tree.text("ARCHITECTURE.md");
    tree.write("ARCHITECTURE.md", page + "| `archive` | later | `uper` |\n");
    const nmk_house::Findings findings = nmk_house::include_arrows(tree.root());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0],
              "ARCHITECTURE.md: archive builds on uper, which has no row in the table "
              "of subsystems");
}

}  // namespace
