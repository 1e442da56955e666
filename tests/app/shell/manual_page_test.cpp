// manual_page: the help as a manual page.

#include "shell/manual_page.h"

#include <gtest/gtest.h>

#include "app/shell/command_runner.h"

namespace nmk_shell {
namespace {

TEST(manual_page, has_every_option_and_section_of_every_command) {
    for (const Command& command : tool_commands) {
        OptionTable table(command.name, command.summary);
        command.declare(table);
        const Printed printed = run({"help", table.command(), "--man"});
        EXPECT_EQ(printed.code, 0) << printed.err;
        EXPECT_TRUE(printed.out.starts_with(".TH nmk-" + table.command() + " 1 "));
        for (const std::string section :
             {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "EXAMPLES"}) {
            EXPECT_NE(printed.out.find("\n.SH " + section + "\n"), std::string::npos) << section;
        }
        for (const Argument& option : table.options()) {
            EXPECT_NE(printed.out.find("\\-\\-" + option.long_name().substr(2, 2)),
                      std::string::npos)
                << option.names;
        }
    }
}

TEST(manual_page, of_the_tool_lists_the_commands) {
    const std::string page = run({"help", "--man"}).out;
    EXPECT_TRUE(page.starts_with(".TH nmk 1 "));
    for (const Command& command : tool_commands) {
        EXPECT_NE(page.find("\n.B " + std::string(command.name) + "\n"), std::string::npos);
    }
}

TEST(manual_page, no_text_is_a_request_of_the_formatter) {
    OptionTable table("odd", ".so /etc/passwd");
    table.describe(".TH again");
    table.describe("'a backslash \\n\n.br");
    const std::string page = command_page(table, "1");
    EXPECT_NE(page.find("\n\\&.TH again\n"), std::string::npos) << page;
    EXPECT_NE(page.find("\n\\&'a backslash \\en\n\\&.br\n"), std::string::npos) << page;
}

}  // namespace
}  // namespace nmk_shell
