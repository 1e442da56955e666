// cmUnZip: reads a zip file, one entry at a time.
//
//     cmUnZip zip;
//     zip.open("parts.zip");
//     zip.goto_file("notes.txt");
//     zip.open_current_file();
//     zip.unzip_current_file(stream, 10240);
//     zip.close();
//
// Operations return 0, or the errno of the failure, and problem() has its words:
//   EINVAL      a call out of order
//   ENOENT      no such entry, or no further one
//   EBADMSG     the file is not a zip, or is damaged there
//   EOPNOTSUPP  an encrypted entry, or one that is neither stored nor deflated
//   EFBIG       an entry says that it unpacks to more than deflate can pack into so few bytes
//   ECANCELED   the watch stopped the operation; else the disk's own
//
// The file is not trusted. An entry delivers exactly the bytes that the directory of the zip says,
// with the check sum that it says, or the last read fails. Where entries overlap, so that together
// they take more bytes than there are, none can be opened. Names are bytes; a NUL in one is
// replaced by a blank. An object is for one thread at a time.
#pragma once

#include <utils/utString.h>

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

struct zip;
struct zip_file;

#pragma GCC visibility push(default)

class cmUnZip {
  public:
    /// Called with the bytes of each block that was read; false stops with ECANCELED.
    using Watch = std::function<bool(std::int64_t bytes)>;

    cmUnZip();
    cmUnZip(const cmUnZip&) = delete;
    cmUnZip& operator=(const cmUnZip&) = delete;
    ~cmUnZip();

    void set_watch(Watch watch) { m_watch = std::move(watch); }

    /// Opens a zip file; the position is before its first entry. A file of no bytes is refused; one
    /// that ends with the record of an empty zip has no entries. Other bytes may precede the zip
    /// where its offsets count them.
    int open(const char* name);
    int close();

    /// Number of entries.
    std::int64_t size() const { return m_count; }

    /// The entries in the order of the zip's directory. Moving closes an open entry.
    int goto_first_file();
    int goto_next_file();

    /// Moves to the first entry of this name, byte for byte. The first call makes a table of all
    /// names, so that the others need not search.
    int goto_file(const utString& name);

    /// The name of the current entry.
    int get_current_file_info(utString& name);

    /// Bytes of the current entry, unpacked and packed, as the zip's directory says.
    int get_current_file_sizes(std::int64_t& size, std::int64_t& packed_size);

    /// The date of the current entry, the 6 numbers of ut_date.h. EBADMSG where it has none.
    int get_current_file_date(int* const date);

    /// Opens the current entry at its beginning.
    int open_current_file();
    int close_current_file();

    /// Reads up to `count` bytes of the open entry, and returns how many: fewer only at its end; -1
    /// when the entry is damaged, which may show in its last block only.
    int read_current_file(char* block, int count);

    /// Writes the rest of the open entry to the stream, in blocks of `block_size` bytes. EIO when
    /// the stream fails. After a failure some bytes may have been written.
    int unzip_current_file(std::ostream& stream, int block_size);

    /// Why the last operation failed, "the check sum is wrong"; empty if none has.
    const std::string& problem() const { return m_problem; }

    /// The errno of the last failure.
    int failure() const { return m_failure; }

  private:
    struct ArchiveClose {
        void operator()(zip* archive) const noexcept;
    };
    struct EntryClose {
        void operator()(zip_file* entry) const noexcept;
    };

    int fail(int error_number, std::string problem);
    int fail_in_entry();
    int open_archive(int descriptor);
    int move_to(std::int64_t index);
    std::string_view name_of(std::int64_t index) const;
    void index_names();
    int check_sizes(std::int64_t size, std::int64_t packed_size, int method);
    bool entries_overlap();
    std::int64_t read_block(char* block, std::int64_t count);
    int check_end();

    std::unique_ptr<zip, ArchiveClose> m_archive;
    std::unique_ptr<zip_file, EntryClose> m_entry;
    std::int64_t m_count = 0;
    std::int64_t m_index = -1;       // of the current entry
    std::int64_t m_file_size = 0;    // of the zip
    std::int64_t m_remaining = 0;    // bytes that the open entry has left
    bool m_is_verified = false;      // the open entry has ended where it should
    std::int64_t m_packed_sum = -1;  // of all entries; -1 until it is needed
    std::unordered_map<std::string_view, std::int64_t> m_first_of_name;  // empty until needed
    Watch m_watch;
    std::string m_problem;
    int m_failure = 0;
};

#pragma GCC visibility pop
