// exported_names.sh on small shared libraries that are compiled here.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "scratch_directory.h"

namespace {

int exit_code_of(const std::string& command) {
    const int status = std::system((command + " 2>/dev/null").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// The exit code of the check on a shared library that is compiled from the text.
int check_library(const std::string& text) {
    const ScratchDirectory folder;
    const std::string source = folder.file("library.cpp", text);
    const std::string library = folder.path() + "/library.so";
    EXPECT_EQ(
        exit_code_of(NMK_CXX_COMPILER " -std=c++20 -shared -fPIC -o " + library + " " + source), 0);
    return exit_code_of(NMK_SOURCE_DIR "/tests/house/exported_names.sh " + library);
}

TEST(exported_names, accepts_names_of_the_library) {
    EXPECT_EQ(check_library("struct nmkA { virtual ~nmkA(); }; nmkA::~nmkA() {}\n"
                            "void nmktrim() {} unsigned co_hash(nmkA*) { return 1; }\n"
                            "static int rows; void dbgLevel_a() { ++rows; }\n"),
              0);
}

TEST(exported_names, refuses_a_function_of_another_name) {
    EXPECT_EQ(check_library("void nmktrim() {} int rows_by_key() { return 1; }\n"), 1);
}

TEST(exported_names, refuses_a_function_that_only_contains_the_name) {
    EXPECT_EQ(check_library("void nmktrim() {} int rows_of_nmk() { return 1; }\n"), 1);
}

TEST(exported_names, refuses_a_variable_of_another_name) {
    EXPECT_EQ(check_library("void nmktrim() {} int rows = 1;\n"), 1);
}

TEST(exported_names, refuses_the_type_information_of_another_class) {
    EXPECT_EQ(check_library("void nmktrim() {} struct A { virtual ~A(); }; A::~A() {}\n"), 1);
}

TEST(exported_names, refuses_a_library_that_exports_nothing) {
    EXPECT_EQ(check_library("static int rows = 1;\n"), 1);
}

TEST(exported_names, refuses_a_library_that_is_missing) {
    EXPECT_NE(exit_code_of(NMK_SOURCE_DIR "/tests/house/exported_names.sh /missing.so"), 0);
}

}  // namespace
