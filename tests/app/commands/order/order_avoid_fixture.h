// order_avoid_fixture.h: what the tests of keep-outs share.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/shell/command_runner.h"
#include "scratch_directory.h"

namespace nmk_order {

inline const std::string cover_plate = NMK_SOURCE_DIR "/samples/cover_plate.drl";

/// Two rows of three holes each, as a table.
inline const char* const two_rows = "x,y\n0,0\n0,20\n50,0\n50,20\n100,0\n100,20\n";

/// Files in a directory that is deleted after the test.
class OrderFiles : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }
    std::string write(const std::string& name, const std::string& text) const {
        return folder.file(name, text);
    }

    ScratchDirectory folder;
};

/// What `nmk order` with these words prints as JSON.
inline nlohmann::json figures(const std::vector<std::string>& words) {
    std::vector<std::string> all = {"order"};
    all.insert(all.end(), words.begin(), words.end());
    all.push_back("--json");
    const nmk_shell::Printed printed = nmk_shell::run(all);
    EXPECT_EQ(printed.code, 0) << printed.err;
    return nlohmann::json::parse(printed.out);
}

}  // namespace nmk_order
