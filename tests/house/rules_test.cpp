// A violation of each kind of the other rules, planted in a tree that is clean without it.
#include <gtest/gtest.h>

#include "house/small_tree.h"

namespace {

class umbrella_headers_catches : public testing::TestWithParam<Violation> {};

TEST_P(umbrella_headers_catches, it) { expect_caught(nmk_house::umbrella_headers, GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    cases, umbrella_headers_catches,
    testing::Values(
        Violation{"a_header_that_its_umbrella_lacks", "include/nmktoolbox/lower/nmkNew.h", "",
                  "include/nmktoolbox/lower.h: lacks #include <nmktoolbox/lower/nmkNew.h>"},
        Violation{"a_header_in_a_comment", "include/nmktoolbox/lower.h",
                  "// #include <nmktoolbox/lower/nmkLow.h>\n",
                  "include/nmktoolbox/lower.h: lacks #include <nmktoolbox/lower/nmkLow.h>"},
        Violation{"a_header_of_another_subsystem", "include/nmktoolbox/lower.h",
                  "#include <nmktoolbox/lower/nmkLow.h>\n#include <nmktoolbox/upper/nmkHigh.h>\n",
                  "include/nmktoolbox/lower.h:2: includes nmktoolbox/upper/nmkHigh.h"},
        Violation{"a_header_included_twice", "include/nmktoolbox/lower.h",
                  "#include <nmktoolbox/lower/nmkLow.h>\n#include <nmktoolbox/lower/nmkLow.h>\n",
                  "include/nmktoolbox/lower.h: includes nmktoolbox/lower/nmkLow.h twice"},
        Violation{"an_umbrella_that_the_whole_library_lacks", "include/nmktoolbox.h",
                  "#include <nmktoolbox/lower.h>\n",
                  "include/nmktoolbox.h: lacks #include <nmktoolbox/upper.h>"}),
    ViolationName());

TEST(umbrella_headers, a_later_subsystem_needs_an_umbrella_in_the_whole_library) {
    const SmallTree tree;
    tree.write("include/nmktoolbox/archive/nmkArchive.h", "");
    EXPECT_EQ(
        nmk_house::umbrella_headers(tree.root()),
        (nmk_house::Findings{"include/nmktoolbox/archive.h: missing; expected the umbrella header",
                             "include/nmktoolbox.h: lacks #include <nmktoolbox/archive.h>"}));
}

class no_prints_catches : public testing::TestWithParam<Violation> {};

TEST_P(no_prints_catches, it) { expect_caught(nmk_house::no_prints, GetParam()); }

constexpr const char* low = "source/lower/nmkLow.cpp";

INSTANTIATE_TEST_SUITE_P(
    cases, no_prints_catches,
    testing::Values(
        Violation{"a_stream", low, "void f() { std::cout << 1; }",
                  "source/lower/nmkLow.cpp:1: cout"},
        Violation{"a_wide_stream", low, "using std::wcerr;", "source/lower/nmkLow.cpp:1: wcerr"},
        Violation{"printf", low, "\nvoid f() { std::printf (\"\"); }",
                  "source/lower/nmkLow.cpp:2: printf"},
        Violation{"a_call_over_two_lines", low, "void f() { puts\n(\"\"); }",
                  "source/lower/nmkLow.cpp:1: puts"},
        Violation{"exit", low, "void f() { ::exit(1); }", "source/lower/nmkLow.cpp:1: exit"},
        Violation{"abort_in_a_public_header", "include/nmktoolbox/lower/nmkLow.h",
                  "inline void f() { std::abort(); }",
                  "include/nmktoolbox/lower/nmkLow.h:1: abort"},
        Violation{"terminate", low, "void f() { std::terminate(); }",
                  "source/lower/nmkLow.cpp:1: terminate"},
        Violation{"the_standard_assertion", low, "void f(int i) { assert(i > 0); }",
                  "source/lower/nmkLow.cpp:1: assert"},
        Violation{"a_write_to_the_terminal", low, "void f() { ::write(STDERR_FILENO, \"\", 0); }",
                  "source/lower/nmkLow.cpp:1: STDERR_FILENO"},
        Violation{"a_call_beside_a_quotation_mark", low, "char c = '\"'; void f() { puts(\"\"); }",
                  "source/lower/nmkLow.cpp:1: puts"}),
    ViolationName());

TEST(no_prints, names_in_comments_literals_and_members_are_left_alone) {
    const SmallTree tree;
    tree.write(low,
               "// abort() prints\nconst char* a = \"exit(1) \\\" puts(2)\";\n"
               "const char* b = R\"x(abort(\"))x\";\nvoid f(F& p) { p.exit(); p.snprintf(1); }\n");
    EXPECT_EQ(nmk_house::no_prints(tree.root()), nmk_house::Findings());
}

class speaks_for_itself_catches : public testing::TestWithParam<Violation> {};

TEST_P(speaks_for_itself_catches, it) { expect_caught(nmk_house::speaks_for_itself, GetParam()); }

// Each text is in two pieces, so that this file passes.
INSTANTIATE_TEST_SUITE_P(cases, speaks_for_itself_catches,
                         testing::Values(Violation{"a_numbered_chapter", low,
                                                   "// as in Pa"
                                                   "rt 4.2\n",
                                                   "source/lower/nmkLow.cpp:1: refers"},
                                         Violation{"several_numbered_chapters", "docs/a.md",
                                                   "pa"
                                                   "rts 4.2 and 4.3\n",
                                                   "docs/a.md:1: refers"},
                                         Violation{"a_numbered_task", "CHANGELOG.md",
                                                   "fixes iss"
                                                   "ue #12\n",
                                                   "CHANGELOG.md:1: refers"},
                                         Violation{"the_document_in_words", low,
                                                   "\n// the sp"
                                                   "ecification\n",
                                                   "source/lower/nmkLow.cpp:2: refers"},
                                         Violation{"its_short_name", low,
                                                   "// This Sp"
                                                   "ec.\n",
                                                   "source/lower/nmkLow.cpp:1: refers"},
                                         Violation{"its_file", "check",
                                                   "# sp"
                                                   "ec.md\n",
                                                   "check:1: refers"},
                                         Violation{"a_document_beside_the_tree", "cmake/a.cmake",
                                                   "# ../sha"
                                                   "red/style.md\n",
                                                   "cmake/a.cmake:1: refers"}),
                         ViolationName());

TEST(speaks_for_itself, ordinary_words_are_left_alone) {
    const SmallTree tree;
    tree.write(low,
               "// part 4 of a path, issues of a name, the special case, ../sha"
               "red/data\n");
    EXPECT_EQ(nmk_house::speaks_for_itself(tree.root()), nmk_house::Findings());
}

class readme_example_catches : public testing::TestWithParam<Violation> {};

TEST_P(readme_example_catches, it) { expect_caught(nmk_house::readme_example, GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    cases, readme_example_catches,
    testing::Values(Violation{"another_program", "examples/order_holes.cpp", "int main() { }\n",
                              "README.md: its example differs from examples/order_holes.cpp"},
                    Violation{"another_output", "examples/order_holes.expected", "11\n",
                              "README.md: its example differs from examples/order_holes.expected"},
                    Violation{"no_program", "README.md", "```\n10\n```\n",
                              "README.md: no block marked cpp"},
                    Violation{"no_output", "README.md", "```cpp\nint main() {}\n```\n",
                              "README.md: no block marked cpp"},
                    Violation{"an_empty_output", "examples/order_holes.expected", "",
                              "examples/order_holes.expected: missing or empty"}),
    ViolationName());

class names_catches : public testing::TestWithParam<Violation> {};

TEST_P(names_catches, it) { expect_caught(nmk_house::names, GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    cases, names_catches,
    testing::Values(
        Violation{"a_struct", low, "namespace n {\nstruct Open_list {};\n}",
                  "source/lower/nmkLow.cpp:2: type Open_list; expected CapitalisedWords"},
        Violation{"a_class_template", low,
                  "namespace n { template <class T> class Open_list final : A<T> {}; }",
                  "source/lower/nmkLow.cpp:1: type Open_list;"},
        Violation{"an_enumeration", low, "namespace n { enum class Goal_kind : int { one }; }",
                  "source/lower/nmkLow.cpp:1: type Goal_kind;"},
        Violation{"lower_case", low, "namespace n { struct open_list {}; }",
                  "source/lower/nmkLow.cpp:1: type open_list;"},
        Violation{"a_type_in_a_test", "tests/lower/plain_low.h", "struct Step_rule { int a; };",
                  "tests/lower/plain_low.h:1: type Step_rule;"},
        Violation{"a_member_of_a_class", low, "namespace n { class A { int total = f(1); }; }",
                  "source/lower/nmkLow.cpp:1: private data member total; expected m_total"},
        Violation{"a_member_after_functions", low,
                  "namespace n { class A {\n public:\n  A() : m_a{1}, m_b(2) { m_a = 3; }\n"
                  "  int f() const { return m_a; }\n private:\n  int m_a{};\n"
                  "  std::function<int(int)> total;\n  int m_b;\n}; }",
                  "source/lower/nmkLow.cpp:7: private data member total;"},
        Violation{"a_trailing_underscore", low, "namespace n { class A { const B& s_; }; }",
                  "source/lower/nmkLow.cpp:1: private data member s_;"},
        Violation{"a_member_that_is_initialised", low, "namespace n { class A { int total{1}; }; }",
                  "source/lower/nmkLow.cpp:1: private data member total;"},
        Violation{"a_type_in_the_global_namespace", "source/lower/lattice.h", "class Lattice {};",
                  "source/lower/lattice.h:1: type Lattice in the global namespace"},
        Violation{"a_function_in_the_global_namespace", low,
                  "namespace n { int a; }\nstatic std::vector<int> rows_of(int n) { return {n}; }",
                  "source/lower/nmkLow.cpp:2: rows_of in the global namespace"},
        Violation{"a_declaration_in_the_global_namespace", "platform/base/source/digits.h",
                  "int count_digits(double);", "platform/base/source/digits.h:1: count_digits in"},
        Violation{"a_constant_in_the_global_namespace", low, "constexpr double limit = 1e-9;",
                  "source/lower/nmkLow.cpp:1: limit in the global namespace"}),
    ViolationName());

TEST(names, what_callers_were_given_is_left_alone) {
    const SmallTree tree;
    tree.write(low,
               "#define A_b \\\n  class Open_list {}\n"
               "int nmkLow::count_rows(int n) { return n; }\n"
               "nmkLow::nmkLow() : m_a{1}, m_b(2) {}\n"
               "bool operator==(A a, B b) { return true; }\n"
               "constinit decltype(start) nmk_start = &first;\n"
               "namespace n { class A { static constexpr int room = 1; void f(); "
               "struct B { int open; }; int m_a[3] = {1, 2}; friend class C; }; }\n"
               "namespace { int helper() { return 1; } }\n"
               "void nmktrim(char* text) { struct stat a; }\n");
    tree.write("include/nmktoolbox/lower/nmkLow.h", "class nmkLow { int points; };\n");
    tree.write("tests/lower/nmkLow_test.cpp", "class nmkLow_rows : public testing::Test {};\n");
    tree.write("platform/base/include/base/number.h", "struct WIN32_FIND_DATA { int a; };\n");
    EXPECT_EQ(nmk_house::names(tree.root()), nmk_house::Findings());
}

class wording_catches : public testing::TestWithParam<Violation> {};

TEST_P(wording_catches, it) { expect_caught(nmk_house::wording, GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    cases, wording_catches,
    testing::Values(Violation{"a_phrase_in_a_comment", low, "\n// A missing name is told.\n",
                              "source/lower/nmkLow.cpp:2: \"told\"; write reported"},
                    Violation{"a_phrase_over_two_lines", low, "// The name is\n// no name.\n",
                              "source/lower/nmkLow.cpp:2: \"is no\"; write what it is"},
                    Violation{"a_message", low, "const char* a = \"this is no number\";",
                              "source/lower/nmkLow.cpp:1: \"is no\""},
                    Violation{"a_test_name", "tests/lower/nmkLow_test.cpp",
                              "TEST(nmkLow, a_missing_file_is_told) {}\n",
                              "tests/lower/nmkLow_test.cpp:1: \"told\""},
                    Violation{"the_name_of_a_case", "tests/lower/nmkLow_test.cpp",
                              "Case a{\"a_missing_file_is_told\"};\n",
                              "tests/lower/nmkLow_test.cpp:1: \"told\""},
                    Violation{"the_beginning_of_a_description", "include/nmktoolbox/lower/nmkLow.h",
                              "/// Answers the count.\n",
                              "include/nmktoolbox/lower/nmkLow.h:1: \". answers\""},
                    Violation{"a_phrase_on_a_page", "CHANGELOG.md", "A name is no number.\n",
                              "CHANGELOG.md:1: \"is no\""}),
    ViolationName());

TEST(wording, excused_phrases_and_names_in_the_code_are_left_alone) {
    const SmallTree tree;
    tree.write(low,
               "// There is no name; it is no longer used. Both answers agree.\n"
               "int told = 1;\n");
    EXPECT_EQ(nmk_house::wording(tree.root()), nmk_house::Findings());
}

TEST(wording, a_list_of_phrases_that_was_lost_is_found_missing) {
    const SmallTree tree;
    tree.write("tests/house/wording.txt", "# nothing\n");
    EXPECT_EQ(nmk_house::wording(tree.root()),
              nmk_house::Findings{"tests/house/wording.txt: no phrases"});
}

TEST(open_rooms, are_left_out_by_the_rule_that_names_them_alone) {
    const SmallTree tree;
    tree.write(low, "namespace n { struct Open_list {}; }  // told\n");
    tree.write("tests/house/open_rooms.txt", "names source/lower  # being renamed\n");
    EXPECT_EQ(nmk_house::names(tree.root()), nmk_house::Findings());
    EXPECT_EQ(nmk_house::wording(tree.root()).size(), 1U);
}

TEST(open_rooms, a_line_that_is_not_needed_is_found) {
    const SmallTree tree;
    tree.write("tests/house/open_rooms.txt", "names source/lower\n");
    EXPECT_EQ(nmk_house::names(tree.root()),
              nmk_house::Findings{
                  "tests/house/open_rooms.txt: names holds in source/lower; remove its line"});
}

}  // namespace
