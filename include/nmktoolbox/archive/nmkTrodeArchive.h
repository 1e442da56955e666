// nmkTrodeArchive: a zip file that holds electrodes by name.
//
// Each electrode has a geometry file, a metadata document, a directory of data files and a
// directory of additional geometry, in entries of these names:
//     version.txt                        the version of the format, 1.02
//     contents.txt                       the names of the electrodes, each followed by "\n"
//     <name>/<name>.ngk                  the geometry
//     <name>/<name>.xml                  the metadata
//     <name>/<data directory>/...        data files, subdirectories kept
//     <name>/additional/<file>           additional geometry
//
// To write: create, then for each electrode create_entry and the insert_ calls, then close. To
// read: open, verify_structure, then size, name and the extract_ and list_ calls, then close. Both
// stream: nothing is held but names. Electrodes are numbered from 0 in the order of contents.txt;
// an index out of range gives the empty name and, where an entry is meant, "/.ngk" and the like.
//
// A file that is written or extracted appears under its name when it is whole; a failure leaves
// what was there. Nothing in an archive is trusted: see the extract_ calls. Strings are bytes.
//
// An object is for one thread at a time, the const operations included: extraction moves the one
// reading position there is.
#pragma once

#include <ncamcontainer/builtin_containers.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class cmUnZip;
class cmZip;

namespace nmk_archive {
class TargetDirectory;
struct DirectoryIdentities;
}  // namespace nmk_archive

/// What verify_structure finds.
enum nmkTrodeArchiveStatus {
    nmkTrodeArchiveOk = 0,            // the structure is sound
    nmkTrodeArchiveNoVersion = 1,     // "version.txt" is absent
    nmkTrodeArchiveNewerVersion = 2,  // the whole-number part of the version is above 1
    nmkTrodeArchiveMissingEntry = 3,  // an electrode lacks its geometry or metadata
    nmkTrodeArchiveBadContents = 4,   // "contents.txt" is absent, or the version is below 1
};

class NMKTOOLBOX_EXPORT nmkTrodeArchive {
  public:
    nmkTrodeArchive();
    nmkTrodeArchive(const nmkTrodeArchive&) = delete;
    nmkTrodeArchive& operator=(const nmkTrodeArchive&) = delete;
    /// Closes the archive: one that is being written is finished.
    ~nmkTrodeArchive();

    /// Starts writing an archive that replaces the file at `close`; 1, or 0 where no file can be
    /// made there. Directories are not made. What is open is closed before.
    int create(const utString& file);

    /// Starts reading; 1, or 0 where the file is not a zip. Any zip opens: verify_structure says
    /// whether it is an archive of electrodes. What is open is closed before.
    int open(const utString& file);

    /// Ends reading or writing; an archive that is written gets its "contents.txt" and its name.
    /// The name of the data directory is kept.
    void close();

    /// Ends writing without a trace: the file stays what it was before `create`. When reading, the
    /// same as close.
    void abandon();

    /// 1 while no archive is open.
    int invalid() const;

    /// The name of the open archive; empty while there is none.
    utString filename() const { return m_file_name; }

    /// Number of electrodes.
    int size() const { return m_entry_names.size(); }

    /// The name of an electrode; empty when the index is out of range.
    utString name(int index) const;

    /// The first electrode of exactly this name, or -1.
    int index(const utString& name) const;

    /// Appends an electrode and returns its index. The name may be there already.
    int create_entry(const utString& name);

    /// The name of the directory of data files in the archive, "html" at first. It is not stored
    /// in the archive: set it before reading as it was when writing.
    utString data_directory() const { return m_data_directory_name; }

    // Deliberate: callers set the name on archives that they hold as const.
    void set_data_directory(const utString& name) const { m_data_directory_name = name; }

    // Inserting. Each file keeps its date. A file that is missing, or is not a regular file, is
    // left out, and so is the archive's own file; the archive then lacks the entry. A name that was
    // used before gives a second entry.

    void insert_geometry(int index, const utString& file);
    void insert_metadata(int index, const utString& file);

    /// Inserts the file under its own name, without its directories.
    void insert_data_file(int index, const utString& file);
    void insert_additional_geometry_file(int index, const utString& file);

    /// Inserts all files in the directory and below, by their names relative to it. Symlinks are
    /// followed; one to a directory that contains it is left out. So are temporary files, as in the
    /// copies of nmkFileDir. Directories without files leave nothing in the archive. One that may
    /// not be read is left out, and `failure` has the reason.
    void insert_data_directory(int index, const utString& directory);

    /// Inserts all electrodes of another archive, behind those that are there, with all entries
    /// that it has beside; 1, or 0 where that is not a zip or any of it cannot be read. It may be
    /// the file that this archive replaces.
    int insert_archive(const utString& file);

    // Extracting: 1 when all was written, else 0. `target` is the name of the file to write, and
    // its directories are made where the entry was found. Of entries with one name the first
    // counts. A damaged or encrypted entry, one packed by a method other than deflate, one that
    // claims to unpack to more than is possible, and one of an archive whose entries overlap gives
    // 0 and writes nothing. An existing file is replaced, a symlink itself; a directory or device
    // is not. Entries are written as plain files whatever they claim to be. The names of temporary
    // files (".nmk_part_" and 16 hexadecimal digits) are refused: such a file would soon be
    // removed.

    int extract_geometry(int index, const utString& target) const;
    int extract_metadata(int index, const utString& target) const;

    /// `entry_file` is relative to the directory in the archive: "images/front.png".
    int extract_data_file(int index, const utString& entry_file, const utString& target) const;
    int extract_additional_geometry_file(int index, const utString& entry_file,
                                         const utString& target) const;

    /// Extracts all files of the directory to the same places below `target_directory`. 1 also
    /// where there are none. Names that lead elsewhere are refused, and the others are extracted:
    /// those with "..", an absolute name, a drive or a backslash. Entries whose name ends in "/"
    /// become directories.
    int extract_data_directory(int index, const utString& target_directory) const;
    int extract_all_additional_geometry(int index, const utString& target_directory) const;

    /// Appends the names of the entries in the directory and below, relative to it and each once,
    /// in no particular order.
    void list_data_directory(int index, utStringcoDList& out) const;
    void list_additional_geometry(int index, utStringcoDList& out) const;

    /// Whether all is there that an archive of electrodes has. Where several statuses hold, the
    /// first in this order is returned: NoVersion, BadContents, NewerVersion, MissingEntry. While
    /// writing, "contents.txt" may be absent.
    nmkTrodeArchiveStatus verify_structure() const;

    /// Why data is missing: the errno of the first failure since `create`, or of the last call when
    /// reading; 0 when all was well. After `close` it says whether the archive was written.
    ///
    /// EBADMSG a damaged archive, EOPNOTSUPP an encrypted entry or an unknown method, EFBIG an
    /// impossible size, ENOENT no such entry, ECANCELED stopped by the progress reporter, else the
    /// disk's own.
    int failure() const { return m_failure; }

    /// The first entry that was inserted from a second file since `create`; empty: none. Readers of
    /// the archive see the first of the two.
    utString repeated_entry() const { return m_repeated_entry; }

    /// A reporter that gets the bytes inserted or extracted since, and can stop the operation;
    /// borrowed. Null, the start value: none.
    void set_progress(nmkProgressBreak* progress);

  protected:
    // The names of entries, and what their names begin with, for the name of an electrode.

    utString geometry_zipentry(const utString& name) const;
    utString metadata_zipentry(const utString& name) const;
    utString datadir_zipprefix(const utString& name) const;
    utString additionaldir_zipprefix(const utString& name) const;

    void insert_zipentry(const utString& entry, const utString& file);
    void insert_directory(const utString& prefix, const utString& directory);
    int extract_zipentry(const utString& entry, const utString& target) const;
    void list_directory(const utString& prefix, utStringcoDList& out) const;

    /// Whether the archive has an entry of this name.
    bool has_zipentry(const utString& entry) const { return m_zip_entries.contains(entry); }

    /// The version of the open archive; 0 where it cannot be read.
    double version() const { return m_version; }

  private:
    void start_new_archive();
    void finish_new_archive();
    void read_archive_data();
    void read_contents();
    void read_version();

    void write_text_entry(const utString& entry, const utString& text);
    int copy_entry(cmUnZip& source);
    void insert_stream(const utString& entry, const utString& file);
    void insert_directory(const utString& prefix, const utString& directory,
                          nmk_archive::DirectoryIdentities& above);
    bool read_text(std::string& text);
    bool add_names(std::string_view contents);
    int extract_directory(const utString& prefix, const utString& target_directory) const;
    int extract_listed(const utString& prefix, const utString& listed,
                       const utString& target_directory,
                       nmk_archive::TargetDirectory& directory) const;
    int extract_zipentry(const utString& entry, const utString& target,
                         nmk_archive::TargetDirectory& directory) const;
    int extract_current(const utString& target, nmk_archive::TargetDirectory& directory) const;
    int fail(int error_number) const;
    bool may_continue(std::int64_t bytes) const;
    void forget();

    double m_version = 0.0;
    utString m_file_name;
    std::unique_ptr<cmUnZip> m_reader;  // while reading
    std::unique_ptr<cmZip> m_writer;    // while writing
    utStringcoSet m_zip_entries;        // the names of all entries of the zip
    utStringcoDynArr m_entry_names;     // of the electrodes, in their order
    utString m_repeated_entry;
    mutable utString m_data_directory_name = "html";
    mutable int m_failure = 0;
    nmkProgressBreak* m_progress = nullptr;
    mutable std::int64_t m_bytes_done = 0;  // of inserted or extracted files
};
