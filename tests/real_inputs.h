// real_inputs.h: files from outside that some tests read: drill files, maps, instances.
//
// They are in a folder beside the project and not part of it, so a test that needs one is skipped
// where it is missing, and fails there when the environment has NMK_REQUIRE_DATA=1:
//
//     if (const auto missing = real_inputs::missing("maps/a.map")) GTEST_SKIP() << *missing;
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace real_inputs {

inline std::string path(const std::string& name) { return NMK_SHARED_DATA_DIR "/" + name; }

/// Why the test cannot run; nothing where the file or folder is there. Fails the test as well where
/// the data are required.
inline std::optional<std::string> missing(const std::string& name) {
    if (std::filesystem::exists(path(name))) return std::nullopt;
    const char* const required = std::getenv("NMK_REQUIRE_DATA");
    if (required != nullptr && std::string_view(required) == "1") {
        ADD_FAILURE() << path(name) << " is missing, and NMK_REQUIRE_DATA is 1";
    }
    return "real inputs are missing: " + path(name).substr(0, path(name).rfind('/'));
}

}  // namespace real_inputs
