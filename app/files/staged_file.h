// staged_file.h: a file that is complete before it gets its name, and can be taken back.
//
// The text goes to a nmk_filesystem::SafeFile beside the target and is flushed to the disk;
// put_in_place then renames it. The file that it replaces keeps a second, temporary name
// until the StagedFile is destroyed, so that take_back can restore it. If anything fails, the
// target is unchanged and no temporary file is left.
#pragma once

#include <filesystem/safe_file.h>

#include <csignal>
#include <memory>
#include <string>
#include <string_view>

#include "text/result.h"

namespace nmk_files {

/// Blocks the signals that would end the process (Ctrl-C, a hangup, SIGTERM) while temporary
/// files exist.
class SignalBlock {
  public:
    SignalBlock();
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;
    ~SignalBlock();

  private:
    sigset_t m_before{};
};

class StagedFile {
  public:
    /// Writes the temporary file. The text is borrowed until put_in_place.
    ///
    /// A symlink is followed to its target; a symlink without a target is refused, since renaming a
    /// file over it would destroy it. A device (a pipe, a terminal, /dev/full) has no temporary
    /// file: put_in_place writes to it. A new file gets the mode that the process gives new files;
    /// a replaced one keeps its own, and its owner if the process may set it.
    static nmk_text::Result<StagedFile> stage(const std::string& file_name, std::string_view text);

    StagedFile(StagedFile&& other) noexcept;
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;
    ~StagedFile();

    bool is_device() const { return m_is_device; }
    bool replaces_file() const { return m_replaces_file; }

    nmk_text::Result<void> put_in_place();

    /// Restores the file that had the name before put_in_place; a device cannot be taken back.
    void take_back();

  private:
    StagedFile() = default;
    bool keep_replaced();

    std::string m_file_name;                                // as the caller gave it, for messages
    std::string m_target;                                   // symlinks resolved
    std::unique_ptr<nmk_filesystem::SafeFile> m_temporary;  // null: none
    std::string m_replaced;   // the second name of the replaced file; empty: none
    std::string_view m_text;  // borrowed
    bool m_is_device = false;
    bool m_replaces_file = false;
    bool m_is_in_place = false;
};

}  // namespace nmk_files
