// write_all_files: writes several files, all of them or none.

#include "files/write_all_files.h"

#include <filesystem>
#include <system_error>

#include "files/staged_file.h"

namespace nmk_files {

namespace {

/// Puts the devices or all others in place, in their order.
nmk_text::Result<void> put_in_place(std::vector<StagedFile>& staged, bool devices) {
    for (StagedFile& file : staged) {
        if (file.is_device() != devices) {
            continue;
        }
        if (nmk_text::Result<void> done = file.put_in_place(); !done) {
            return done;
        }
    }
    return {};
}

}  // namespace

void WrittenFiles::remove_new() const {
    for (const std::string& file_name : new_names) {
        std::error_code ignored;
        std::filesystem::remove(file_name, ignored);
    }
}

nmk_text::Result<WrittenFiles> write_all_files(const std::vector<OutputFile>& files) {
    const SignalBlock block;
    WrittenFiles written;
    std::vector<StagedFile> staged;
    for (const OutputFile& file : files) {
        nmk_text::Result<StagedFile> one = StagedFile::stage(file.file_name, file.text);
        if (!one) {
            return one.error();
        }
        written.names.push_back(file.file_name);
        if (!one->replaces_file()) {
            written.new_names.push_back(file.file_name);
        }
        staged.push_back(*std::move(one));
    }
    for (const bool devices : {false, true}) {
        if (const nmk_text::Result<void> done = put_in_place(staged, devices); !done) {
            for (StagedFile& file : staged) {
                file.take_back();
            }
            return done.error();
        }
    }
    return written;
}

}  // namespace nmk_files
