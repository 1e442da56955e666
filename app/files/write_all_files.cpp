// write_all_files: writes several files, all of them or none.

#include "files/write_all_files.h"

#include <filesystem>
#include <system_error>

#include "files/write_whole_file.h"

namespace nmk_files {

namespace {

bool exists(const std::string& file_name) {
    std::error_code ignored;
    return std::filesystem::exists(file_name, ignored);
}

}  // namespace

void WrittenFiles::take_back() const {
    for (const std::string& file_name : made_new) {
        std::error_code ignored;
        std::filesystem::remove(file_name, ignored);
    }
}

std::optional<std::string> write_all_files(const std::vector<OutputFile>& files,
                                           WrittenFiles& written) {
    for (const OutputFile& file : files) {
        const bool is_new = !exists(file.file_name);
        if (const auto problem = write_whole_file(file.file_name, file.text)) {
            written.take_back();
            return file.file_name + ": " + *problem;
        }
        written.names.push_back(file.file_name);
        if (is_new) {
            written.made_new.push_back(file.file_name);
        }
    }
    return std::nullopt;
}

}  // namespace nmk_files
