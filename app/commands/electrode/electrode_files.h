// electrode_files.h: files on their way into an archive, and out of it.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <ostream>

#include "commands/electrode/electrode_archive.h"
#include "commands/electrode/electrode_options.h"

namespace nmk_electrode {

/// Writes an archive of new electrodes, for add behind those of the present file. The file appears
/// when it is whole. Returns the exit code.
int write_archive(const ElectrodeOptions& options, std::ostream& out, std::ostream& err,
                  nmkProgressBreak& progress);

/// Writes the files of one electrode of the archive. Those that are damaged or refused are left
/// out, the others are written. Returns the exit code.
int extract_electrode(const ElectrodeOptions& options, const ArchiveFile& file, std::ostream& out,
                      std::ostream& err, nmkProgressBreak& progress);

}  // namespace nmk_electrode
