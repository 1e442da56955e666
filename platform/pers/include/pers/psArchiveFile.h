// psArchiveFile: a file of named object streams.
//
//     psArchiveFile file(psArchiveFileHeader("Parts", "Version 1.0", psByteOrderLittle),
//                        "parts.zip", psFileModeWrite);
//     CArchive* archive = nullptr;
//     if (file.write_archive("/part/1", archive) == 0) *archive << part;
//     file.close();
//
// The file is a zip: an entry for each stream, under its name as it was given, and before them
// "archive-file-header", with the header and the order of bytes. It appears under its name,
// complete, when it is closed; a file whose writing failed leaves what was there before.
//
// Operations return 0, or the errno of the failure: EINVAL for a call out of order or a name that
// cannot be used, ENOENT for a file or a stream that is not there, EEXIST for a name that was
// written before, EBADMSG for what is not such a file, else the disk's own. What goes wrong in a
// stream is thrown by its CArchive. The bytes of a file are not trusted. For one thread at a time.
#pragma once

#include <pers/psArchiveFileHeader.h>
#include <utils/utExport.h>
#include <utils/utString.h>

#include <memory>

class CArchive;

enum psFileMode : int { psFileModeClosed = 0, psFileModeWrite = 1, psFileModeRead = 2 };

class UT_EXPORT psArchiveFileBase {
  public:
    psArchiveFileBase() = default;
    psArchiveFileBase(const psArchiveFileBase&) = delete;
    psArchiveFileBase& operator=(const psArchiveFileBase&) = delete;
    virtual ~psArchiveFileBase();

    /// Closes the open stream and the file, and gives a written file its name. Never throws: where
    /// the last bytes of a stream cannot be written the file is dropped, and the errno returned.
    /// Returns 0 for a file that is not open.
    virtual int close() = 0;
};

class UT_EXPORT psArchiveFile : public psArchiveFileBase {
  public:
    /// Opens the file; a failure is what the next operation returns. The header is written to the
    /// file, or replaced by that of the file that is read.
    psArchiveFile(const psArchiveFileHeader& header, const utString& path, psFileMode mode);

    /// Closes the file; while an exception is on its way a file that is written is dropped.
    ~psArchiveFile() override;

    /// Opens a file; one that is open for reading is closed, one for writing dropped.
    int open(const utString& path, psFileMode mode);

    /// Starts a stream of this name, 1 to 65535 bytes without a nul. `archive` is to be written; it
    /// lasts until the next stream is started or the file is closed, and becomes null in a failure.
    int write_archive(const utString& name, CArchive*& archive);

    /// Opens the stream of this name. `archive` is to be read; it lasts and becomes null likewise.
    int read_archive(const utString& name, CArchive*& archive);

    int close() override;

    /// The header that is written, or that was read.
    const psArchiveFileHeader& header() const noexcept { return m_header; }

  private:
    class Output;
    class Input;

    int open_to_write(const utString& path);
    int open_to_read(const utString& path);
    void drop() noexcept;

    psArchiveFileHeader m_header;
    std::unique_ptr<Output> m_output;  // of a file that is written
    std::unique_ptr<Input> m_input;    // of a file that is read
    int m_failure = 0;                 // of the last attempt to open
    int m_exceptions_at_start;
};
