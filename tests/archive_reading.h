// archive_reading.h: bytes read as an archive of electrodes, in every way that there is.
#pragma once

#include <filesystem/safe_file.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace archive_reading {

inline void require(bool condition) {
    if (!condition) std::abort();
}

/// Opens the bytes as an archive in the directory, which must be empty and is so again afterwards,
/// lists and extracts all of it, and requires that nothing was written anywhere but in the target,
/// and no temporary file left there. Entries may have names that resemble a temporary file's, and
/// directories may even have such a name; files of such a name are never extracted.
/// Returns 1 where the bytes were opened.
inline int read_archive(const std::string& directory, std::string_view bytes) {
    namespace fs = std::filesystem;
    const std::string zip = directory + "/z", target = directory + "/o";
    std::ofstream(zip, std::ios::binary) << bytes;
    nmkTrodeArchive archive;
    const int opened = archive.open(utString(zip));
    archive.verify_structure();
    for (int i = -1; i < archive.size() && i < 10; ++i) {
        utStringcoDList list;
        archive.list_data_directory(i, list);
        archive.list_additional_geometry(i, list);
        archive.extract_geometry(i, utString(target + "/g"));
        archive.extract_metadata(i, utString(target + "/m"));
        archive.extract_data_directory(i, utString(target));
        archive.extract_all_additional_geometry(i, utString(target));
    }
    archive.close();
    for (const auto& entry : fs::directory_iterator(directory)) {
        require(entry.path() == zip || entry.path() == target);
    }
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        require(entry.is_regular_file() || entry.is_directory());
        const std::string name = entry.path().filename().string();
        require(!entry.is_regular_file() || !nmk_filesystem::is_temporary_name(name));
    }
    fs::remove(zip);
    fs::remove_all(target);
    return opened;
}

}  // namespace archive_reading
