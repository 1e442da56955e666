// electrode_archive.h: an electrode archive as the tool looks at it.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "text/result.h"

namespace nmk_electrode {

/// The file of an archive: what opens it, and what messages call it.
struct ArchiveFile {
    std::string path, name;
};

/// A file in an archive, by its name in its directory there.
struct ArchivedFile {
    std::string name;
    std::int64_t bytes = 0;
};

/// One that is listed again has the sizes of the first, and no lists.
struct ListedElectrode {
    std::string name;
    std::optional<std::int64_t> geometry, metadata;  // bytes; empty where the archive has none
    std::vector<ArchivedFile> data, additional;      // by name
};

/// What an archive has, and whether that is sound.
struct ArchiveContents {
    ArchiveFile file;
    double version = 0.0;
    std::vector<ListedElectrode> electrodes;
    std::int64_t entries = 0, bytes = 0;  // of the zip, unpacked
    nmkTrodeArchiveStatus status = nmkTrodeArchiveOk;
    std::string problem;  // why the status is what it is, or which data is damaged; empty: sound
};

/// Reads the names and sizes; an Error where the file is not a zip. `data_name` is the name of the
/// data directory in the archive.
nmk_text::Result<ArchiveContents> read_contents(const ArchiveFile& file,
                                                const std::string& data_name);

/// Reads all data of an archive whose structure is sound, and notes the first damage in `problem`.
/// Returns false where the reporter stopped it.
bool read_data(ArchiveContents& contents, nmkProgressBreak& progress);

/// Why writing or extracting failed, in words: "no space left on device".
std::string failure_text(const nmkTrodeArchive& archive);

}  // namespace nmk_electrode
