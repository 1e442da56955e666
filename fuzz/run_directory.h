// run_directory.h: the directory for the files of one run of a fuzz target.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace nmk_fuzz {

/// Empty when the run begins; the same at each call.
inline const std::string& run_directory() {
    static const std::string directory = [] {
        std::string name = (std::filesystem::temp_directory_path() / "nmk_fuzz_XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) std::abort();
        return name;
    }();
    return directory;
}

}  // namespace nmk_fuzz
