// same_file: whether two names are names of one file.

#include "files/same_file.h"

#include <filesystem>
#include <system_error>

namespace nmk_files {

bool is_same_file(std::string_view a, std::string_view b) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    return fs::absolute(a, ignored).lexically_normal() ==
               fs::absolute(b, ignored).lexically_normal() ||
           (fs::is_regular_file(a, ignored) && fs::equivalent(a, b, ignored));
}

}  // namespace nmk_files
