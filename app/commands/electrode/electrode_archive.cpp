// electrode_archive: an electrode archive as the tool looks at it.

#include "commands/electrode/electrode_archive.h"

#include <compress/cmUnZip.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <streambuf>
#include <string_view>
#include <system_error>
#include <unordered_map>

#include "text/escaped_text.h"
#include "text/number_format.h"

namespace nmk_electrode {

namespace {

using Index = std::unordered_map<std::string, std::size_t>;  // electrodes by name

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

/// The name of an electrode may have slashes too.
void put_entry(ArchiveContents& contents, const Index& index, std::string_view entry,
               const std::string& data_name, std::int64_t bytes) {
    for (auto slash = entry.find('/'); slash != entry.npos; slash = entry.find('/', slash + 1)) {
        const auto found = index.find(std::string(entry.substr(0, slash)));
        if (found != index.end()) {
            put_file(contents.electrodes[found->second], entry.substr(slash + 1), data_name, bytes);
        }
    }
}

void read_entries(cmUnZip& zip, const ElectrodeOptions& options, ArchiveContents& contents) {
    Index index;
    for (std::size_t i = 0; i < contents.electrodes.size(); ++i) {
        index.try_emplace(contents.electrodes[i].name, i);
    }
    for (int end = zip.goto_first_file(); end == 0; end = zip.goto_next_file()) {
        utString entry;
        std::int64_t bytes = 0, packed = 0;
        zip.get_current_file_info(entry);
        zip.get_current_file_sizes(bytes, packed);
        ++contents.entries;
        contents.bytes += std::min(bytes, INT64_MAX - contents.bytes);
        put_entry(contents, index, entry.view(), options.data_name, bytes);
    }
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
    return "an electrode that is listed twice lacks its geometry or metadata";
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

nmk_text::Result<ArchiveContents> read_contents(const ElectrodeOptions& options) {
    const utString file_name(options.file_name());
    VersionedArchive archive;
    cmUnZip zip;
    if (zip.open(file_name.c_str()) != 0) {
        return nmk_text::Error{options.file_name(), 0, zip.problem()};
    }
    if (archive.open(file_name) == 0) {
        return nmk_text::Error{options.file_name(), 0, failure_text(archive)};
    }
    ArchiveContents contents;
    contents.file_name = options.file_name();
    contents.version = archive.version();
    contents.status = archive.verify_structure();
    for (int i = 0; i < archive.size(); ++i) {
        contents.electrodes.push_back({std::string(archive.name(i).view()), {}, {}, {}, {}});
    }
    read_entries(zip, options, contents);
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
    progress.set_range(static_cast<double>(contents.bytes));
    progress.send_progress_bar_to_0("Reading");
    zip.set_watch([&](std::int64_t bytes) {
        return progress.jump_to(done += static_cast<double>(bytes)) == 0;
    });
    bool is_whole = zip.open(contents.file_name.c_str()) == 0;
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
            return "not a zip file, or damaged";
        case EOPNOTSUPP:
            return "encrypted, or packed by a method other than deflate";
        case EPERM:
            return "names that lead out of the directory or are reserved were not written";
        case ENOENT:
            return "no such entry or directory";
        default:
            return words_of(archive.failure());
    }
}

}  // namespace nmk_electrode
