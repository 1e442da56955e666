// temporary_directory: where temporary files go that have no place beside a target.

#include "files/temporary_directory.h"

#include <system_error>

namespace nmk_files {

std::filesystem::path temporary_directory() {
    std::error_code problem;
    auto directory = std::filesystem::temp_directory_path(problem);
    return problem ? std::filesystem::path("/tmp") : directory;
}

}  // namespace nmk_files
