// browser.h: takes a page through steps in headless Chromium, for tests of what its script does.
//
// drive_page.py beside this file says what a step may be. Where there is no Chromium a test is
// skipped, and fails where the environment has NMK_REQUIRE_BROWSER=1.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scratch_directory.h"

namespace browser {

/// Why the test cannot run; nothing where Chromium and Python are there.
inline std::optional<std::string> missing() {
    if (std::system("command -v python3 >/dev/null && { command -v chromium || command -v "
                    "chromium-browser; } >/dev/null") == 0) {
        return std::nullopt;
    }
    const char* const required = std::getenv("NMK_REQUIRE_BROWSER");
    if (required != nullptr && std::string_view(required) == "1") {
        ADD_FAILURE() << "Chromium or Python is missing, and NMK_REQUIRE_BROWSER is 1";
    }
    return "Chromium or Python is missing";
}

/// How a page is shown.
struct Window {
    int width = 1200;
    int height = 900;
    std::string modes;  // "dark", "still"
};

/// One line of JSON for each step.
inline std::vector<std::string> drive(const std::string& page, const Window& window,
                                      const std::vector<std::string>& steps) {
    const ScratchDirectory folder;
    std::string input;
    for (const std::string& step : steps) input += step + "\n";
    const std::string results = folder.path() + "/results";
    const std::string command = "python3 " NMK_SOURCE_DIR "/tests/app/browser/drive_page.py " +
                                folder.file("page.html", page) + " " +
                                std::to_string(window.width) + " " + std::to_string(window.height) +
                                " " + window.modes + " <" + folder.file("steps", input) + " >" +
                                results;
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::vector<std::string> lines;
    std::ifstream file(results);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    EXPECT_EQ(lines.size(), steps.size());
    lines.resize(steps.size());
    return lines;
}

}  // namespace browser
