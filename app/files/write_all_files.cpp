// write_all_files: writes several files, all of them or none.

#include "files/write_all_files.h"

#include <filesystem>
#include <system_error>

#include "files/write_whole_file.h"

namespace nmk_app {

namespace {

bool exists(const std::string& file_name) {
    std::error_code ignored;
    return std::filesystem::exists(file_name, ignored);
}

void remove_all(const std::vector<std::string>& file_names) {
    for (const std::string& file_name : file_names) {
        std::error_code ignored;
        std::filesystem::remove(file_name, ignored);
    }
}

}  // namespace

std::optional<std::string> write_all_files(const std::vector<OutputFile>& files,
                                           std::vector<std::string>& written) {
    std::vector<std::string> made_new;
    for (const OutputFile& file : files) {
        const bool is_new = !exists(file.file_name);
        if (const auto problem = write_whole_file(file.file_name, file.text)) {
            remove_all(made_new);
            return file.file_name + ": " + *problem;
        }
        if (is_new) {
            made_new.push_back(file.file_name);
        }
        written.push_back(file.file_name);
    }
    return std::nullopt;
}

}  // namespace nmk_app
