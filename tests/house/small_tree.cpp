#include "house/small_tree.h"

#include <gtest/gtest.h>

namespace {

// Two subsystems, one on the other; two platform libraries, one on the other; a tool in the rooms
// of the real one.
constexpr const char* architecture = R"(# Architecture

| folder | for what | may include |
|---|---|---|
| `platform/<library>/include` | stand-ins | `platform/<library>/include`, `platform/<needed>/include` |
| `platform/<library>/source` | stand-ins | `platform/<library>`, `platform/<needed>/include` |
| `include/nmktoolbox/<subsystem>` | contracts | `include/nmktoolbox/<subsystem>`, `include/nmktoolbox/<below>`, `platform/<any>/include` |
| `include/nmktoolbox.h` | all | `include` |
| `source/<subsystem>` | work | `source/<subsystem>`, `source/exact`, `include/nmktoolbox/<subsystem>`, `include/nmktoolbox/<below>`, `platform/<any>/include` |
| `source/exact` | arithmetic | `source/exact` |
| `source/lower/nmkPair.cpp` | a pair | `include/nmktoolbox/upper/nmkPair*` |
| `app/main.cpp` | entry | `app/shell`, `app/commands` |
| `app/shell` | all commands | `app/shell`, `app/text`, `include`, `platform/<any>/include` |
| `app/commands/<command>` | one command | `app/commands/<command>`, `app/formats`, `app/draw`, `app/shell`, `app/text`, `include`, `platform/<any>/include` |
| `app/formats/<format>` | readers | `app/formats/<format>`, `app/text`, `include`, `platform/<any>/include` |
| `app/draw` | pictures | `app/draw`, `app/text` |
| `app/text` | text | `app/text` |
| `tests/<subsystem>` | tests | `tests/<subsystem>`, `tests/shared.h`, `source/<subsystem>`, `include`, `platform/<any>/include` |
| `tests/shared.h` | tests | |
| `examples` | programs | `include` |

| subsystem | for what | builds on |
|---|---|---|
| `lower` | below | platform |
| `upper` | above | `lower` |
)";

}  // namespace

SmallTree::SmallTree() {
    write("ARCHITECTURE.md", architecture);
    write("CONTRIBUTING.md", "# Contributing\n");
    write("CHANGELOG.md", "# Changes\n");
    write("README.md", "# Name\n\n```cpp\nint main() {}\n```\n\n```\n10\n```\n");
    write("examples/order_holes.expected", "10\n");
    write("platform/CMakeLists.txt",
          "nmk_platform_library(base)\nnmk_platform_library(solid NEEDS base LINK other)\n"
          "nmk_platform_library(apart)\n");
    write("platform/base/include/base/number.h", "#include <cmath>\n");
    write("platform/base/source/number.cpp", "#include \"base/number.h\"\n#include \"digits.h\"\n");
    write("platform/base/source/digits.h", "");
    write("platform/solid/include/solid/solid.h", "#include <base/number.h>\n");
    write("platform/apart/include/apart/apart.h", "");
    write("include/nmktoolbox.h", "#include <nmktoolbox/lower.h>\n#include <nmktoolbox/upper.h>\n");
    write("include/nmktoolbox/lower.h", "#include <nmktoolbox/lower/nmkLow.h>\n");
    write("include/nmktoolbox/upper.h",
          "#include <nmktoolbox/upper/nmkHigh.h>  // the one\n#include "
          "<nmktoolbox/upper/nmkPair.h>\n");
    write("include/nmktoolbox/lower/nmkLow.h", "#include <solid/solid.h>\n");
    write("include/nmktoolbox/upper/nmkHigh.h", "#include <nmktoolbox/lower.h>\n");
    write("include/nmktoolbox/upper/nmkPair.h", "");
    write("source/exact/power.h", "");
    write("source/lower/lattice.h", "");
    write("source/lower/nmkLow.cpp",
          "#include \"lower/lattice.h\"\n#include \"exact/power.h\"\n"
          "// #include \"upper/rows.h\"\n");
    write("source/lower/nmkPair.cpp", "#include <nmktoolbox/upper/nmkPair.h>\n");
    write("source/upper/rows.h", "");
    write("source/upper/nmkHigh.cpp",
          "#include <nmktoolbox/lower/nmkLow.h>\n#include \"rows.h\"\n");
    write("app/main.cpp", "#include \"shell/run.h\"\n#include \"commands/order/order.h\"\n");
    write("app/shell/run.h", "#include \"text/digits.h\"\n");
    write("app/commands/order/order.h",
          "#include \"formats/csv/csv.h\"\n#include <nmktoolbox.h>\n");
    write("app/commands/route/route.h", "#include \"draw/picture.h\"\n");
    write("app/formats/csv/csv.h", "#include \"text/digits.h\"\n");
    write("app/draw/picture.h", "");
    write("app/text/digits.h", "");
    write("tests/shared.h", "");
    write("tests/lower/nmkLow_test.cpp",
          "#include \"shared.h\"\n#include \"lower/lattice.h\"\n"
          "#include \"lower/plain_low.h\"\n#include <nmktoolbox.h>\n");
    write("tests/lower/plain_low.h", "");
    write("tests/house/wording.txt",
          "told | | | reported\nis no | there | longer | what it is\n"
          ". answers | | | Returns\n");
    write("tests/house/open_rooms.txt", "# none\n");
    write("examples/order_holes.cpp", "int main() {}\n");
}

void expect_caught(nmk_house::Findings (*rule)(const std::filesystem::path&),
                   const Violation& violation) {
    const SmallTree tree;
    EXPECT_EQ(rule(tree.root()), nmk_house::Findings());
    tree.write(violation.file, violation.text);
    const nmk_house::Findings findings = rule(tree.root());
    ASSERT_EQ(findings.size(), 1U) << testing::PrintToString(findings);
    EXPECT_EQ(findings[0].substr(0, std::string(violation.finding).size()), violation.finding);
}
