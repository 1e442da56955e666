// common_options: the options that every command takes.

#include "shell/common_options.h"

#include "shell/level_option.h"

namespace nmk_shell {

namespace {

Problem set_level(const std::string& text) {
    Problem problem;
    apply_level_option(text, problem);
    return problem;
}

Problem ignore(const std::string&) { return {}; }

}  // namespace

void declare_common_options(OptionTable& table) {
    table.group("Common options");
    table.repeated_option("--level", "NAME=VALUE", set_level,
                          "set a version level of the library first: previous, default, preview "
                          "or a number; nmk levels lists them");
    table.option("-h,--help", "", ignore, "print this help");
    table.option("-V,--version", "", ignore, "print the version of the tool");
}

}  // namespace nmk_shell
