// curve_runner.h: runs `nmk curve`, and reads what it printed.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/shell/command_runner.h"

namespace nmk_curve {

inline const std::string bracket = NMK_SOURCE_DIR "/samples/bracket.dxf";

inline nmk_shell::Printed curve(std::vector<std::string> words) {
    words.insert(words.begin(), "curve");
    return nmk_shell::run(words);
}

/// The JSON that the command prints.
inline nlohmann::json json_of(std::vector<std::string> words, int code = 0) {
    words.emplace_back("--json");
    const nmk_shell::Printed printed = curve(words);
    EXPECT_EQ(printed.code, code) << printed.err;
    return nlohmann::json::parse(printed.out, nullptr, false);
}

/// What is known of the one curve.
inline nlohmann::json facts_of(const std::vector<std::string>& words) {
    const nlohmann::json report = json_of(words);
    EXPECT_EQ(report.value("curves", nlohmann::json::array()).size(), 1U) << report;
    return report["curves"][0];
}

}  // namespace nmk_curve
