// job_error.h: why a file could not be read or written.
#pragma once

#include <cstddef>
#include <string>

namespace nmk_files {

/// One line for a person, naming the place.
struct Error {
    std::string file_name;
    std::size_t line = 0;  // from 1; 0 where no line is meant
    std::string message;   // what was found, and what was expected

    /// "plate.drl:12: unknown tool T9; the header defines T1 to T4"
    std::string text() const {
        return file_name + (line > 0 ? ":" + std::to_string(line) : std::string()) + ": " + message;
    }
};

}  // namespace nmk_files
