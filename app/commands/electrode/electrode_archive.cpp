// electrode_archive: an electrode archive as the tool looks at it.

#include "commands/electrode/electrode_archive.h"

#include <compress/cmUnZip.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <set>
#include <streambuf>
#include <string_view>
#include <system_error>
#include <unordered_map>

#include "text/escaped_text.h"
#include "text/number_format.h"

namespace nmk_electrode {

namespace {

/// The first electrode of each name, and the lengths of their names: so an entry is compared with
/// names of these lengths only, and one of many slashes costs no more than others.
struct Index {
    std::unordered_map<std::string_view, std::size_t> first;
    std::set<std::size_t> lengths;
};

constexpr int read_block = 1 << 16;

/// Gives access to the version.
class VersionedArchive : public nmkTrodeArchive {
  public:
    using nmkTrodeArchive::version;
};

/// Takes bytes and does nothing with them.
class Nowhere : public std::streambuf {
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
    int_type overflow(int_type character) override { return character; }
};

void put_file(ListedElectrode& electrode, std::string_view name, const std::string& data_name,
              std::int64_t bytes) {
    const std::string data = data_name + "/";
    constexpr std::string_view additional = "additional/";
    if (name == electrode.name + ".ngk") {
        electrode.geometry = electrode.geometry.value_or(bytes);
    } else if (name == electrode.name + ".xml") {
        electrode.metadata = electrode.metadata.value_or(bytes);
    } else if (name.starts_with(data)) {
        electrode.data.push_back({std::string(name.substr(data.size())), bytes});
    } else if (name.starts_with(additional)) {
        electrode.additional.push_back({std::string(name.substr(additional.size())), bytes});
    }
}

Index index_of(const std::vector<ListedElectrode>& electrodes) {
    Index index;
    for (std::size_t i = 0; i < electrodes.size(); ++i) {
        index.first.try_emplace(electrodes[i].name, i);
        index.lengths.insert(electrodes[i].name.size());
    }
    return index;
}

/// The name of an electrode may have slashes too.
void put_entry(ArchiveContents& contents, const Index& index, std::string_view entry,
               const std::string& data_name, std::int64_t bytes) {
    for (const std::size_t length : index.lengths) {
        if (length >= entry.size()) break;
        if (entry[length] != '/') continue;
        const auto found = index.first.find(entry.substr(0, length));
        if (found == index.first.end()) continue;
        put_file(contents.electrodes[found->second], entry.substr(length + 1), data_name, bytes);
    }
}

/// The lists are not repeated: a million names would take them a million times.
void put_sizes_of_repeated(std::vector<ListedElectrode>& electrodes, const Index& index) {
    for (ListedElectrode& each : electrodes) {
        const ListedElectrode& first = electrodes[index.first.at(each.name)];
        each.geometry = first.geometry;
        each.metadata = first.metadata;
    }
}

void read_entries(cmUnZip& zip, const std::string& data_name, ArchiveContents& contents) {
    const Index index = index_of(contents.electrodes);
    for (int end = zip.goto_first_file(); end == 0; end = zip.goto_next_file()) {
        utString entry;
        std::int64_t bytes = 0, packed = 0;
        zip.get_current_file_info(entry);
        zip.get_current_file_sizes(bytes, packed);
        ++contents.entries;
        contents.bytes += std::min(bytes, INT64_MAX - contents.bytes);
        put_entry(contents, index, entry.view(), data_name, bytes);
    }
    put_sizes_of_repeated(contents.electrodes, index);
    for (ListedElectrode& each : contents.electrodes) {
        std::ranges::stable_sort(each.data, {}, &ArchivedFile::name);
        std::ranges::stable_sort(each.additional, {}, &ArchivedFile::name);
    }
}

std::string missing_entry(const ArchiveContents& contents) {
    for (const ListedElectrode& each : contents.electrodes) {
        const std::string name = "electrode " + nmk_text::quoted(each.name);
        if (!each.geometry) return name + " has no geometry";
        if (!each.metadata) return name + " has no metadata";
    }
    return "an electrode lacks its geometry or metadata";
}

std::string reason_of(const ArchiveContents& contents, bool has_contents) {
    const std::string version = nmk_text::readable_number(contents.version);
    switch (contents.status) {
        case nmkTrodeArchiveOk:
            return {};
        case nmkTrodeArchiveNoVersion:
            return "version.txt is missing; expected an electrode archive";
        case nmkTrodeArchiveNewerVersion:
            return "version " + version + " is newer than this program; expected 1.0 to 1.99";
        case nmkTrodeArchiveMissingEntry:
            return missing_entry(contents);
        case nmkTrodeArchiveBadContents:
            break;
    }
    return has_contents ? "version.txt has no version from 1 on"
                        : "contents.txt is missing, damaged or too long";
}

std::string words_of(int error_number) {
    std::string words = std::generic_category().message(error_number);
    if (!words.empty() && words[0] >= 'A' && words[0] <= 'Z') words[0] += 'a' - 'A';
    return words;
}

}  // namespace

nmk_text::Result<ArchiveContents> read_contents(const ArchiveFile& file,
                                                const std::string& data_name) {
    VersionedArchive archive;
    cmUnZip zip;
    if (zip.open(file.path.c_str()) != 0) return nmk_text::Error{file.name, 0, zip.problem()};
    if (archive.open(utString(file.path)) == 0) {
        return nmk_text::Error{file.name, 0, failure_text(archive)};
    }
    ArchiveContents contents;
    contents.file = file;
    contents.version = archive.version();
    contents.status = archive.verify_structure();
    for (int i = 0; i < archive.size(); ++i) {
        contents.electrodes.push_back({std::string(archive.name(i).view()), {}, {}, {}, {}});
    }
    read_entries(zip, data_name, contents);
    const bool has_version = contents.version != 0.0;
    contents.problem =
        reason_of(contents, has_version ? false : zip.goto_file("contents.txt") == 0);
    return contents;
}

bool read_data(ArchiveContents& contents, nmkProgressBreak& progress) {
    cmUnZip zip;
    Nowhere nowhere;
    std::ostream stream(&nowhere);
    double done = 0;
    progress.send_progress_bar_to_0("Reading");
    progress.set_range(static_cast<double>(contents.bytes));
    zip.set_watch([&](std::int64_t bytes) {
        return progress.jump_to(done += static_cast<double>(bytes)) == 0;
    });
    bool is_whole = zip.open(contents.file.path.c_str()) == 0;
    for (int end = zip.goto_first_file(); is_whole && end == 0; end = zip.goto_next_file()) {
        is_whole = zip.open_current_file() == 0 && zip.unzip_current_file(stream, read_block) == 0;
        if (!is_whole) {
            utString entry;
            const std::string problem = zip.problem();
            zip.get_current_file_info(entry);
            contents.problem = "entry " + nmk_text::quoted(entry.view()) + ": " + problem;
            break;
        }
    }
    progress.send_progress_bar_to_100();
    return is_whole || zip.failure() != ECANCELED;
}

std::string failure_text(const nmkTrodeArchive& archive) {
    switch (archive.failure()) {
        case EBADMSG:
            return "an entry is damaged; nmk electrode verify names it";
        case EOPNOTSUPP:
            return "encrypted, or packed by a method other than deflate";
        case EPERM:
            return "names that lead out of the directory or are reserved were not written";
        case EFBIG:
            return "a file is too large, or an entry says that it unpacks to more than is possible";
        case ENOENT:
            return "no such directory; expected one that exists";
        case EINVAL:
            return "not a regular file; expected a file or a new name";
        default:
            return words_of(archive.failure());
    }
}

}  // namespace nmk_electrode
