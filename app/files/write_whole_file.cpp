// write_whole_file: writes a file as a whole or not at all.

#include "files/write_whole_file.h"

#include "files/staged_file.h"

namespace nmk_files {

nmk_text::Result<void> write_whole_file(const std::string& file_name, std::string_view text) {
    const SignalBlock block;
    nmk_text::Result<StagedFile> file = StagedFile::stage(file_name, text);
    return file ? file->put_in_place() : file.error();
}

}  // namespace nmk_files
