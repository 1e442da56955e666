// machining_job.h: what every reader of holes makes, what ordering rearranges, and what every
// writer is given.
//
// A job is a list of tools; a tool is a list of items in the order in which the cutter takes them.
// Lengths are millimetres, whatever the file was written in (a TSPLIB file has no unit and is taken
// as millimetres). Items keep the position at which they stood in their file, so that a writer can
// find its text again and a check can tell that none was lost or cut twice.
#pragma once

#include <geometry/giPoint3.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "text/result.h"

namespace nmk_job {

/// A hole (one point) or a slot or line (two points) to be machined.
struct JobItem {
    giPoint3 start;                // mm; where the cut begins as the file has it
    std::optional<giPoint3> end;   // mm; empty for a hole
    std::size_t source_index = 0;  // position among all items of the file, from 0
    bool reversed = false;         // cut from end to start; only ever set on items with an end

    const giPoint3& entry() const { return reversed ? *end : start; }
    const giPoint3& exit() const { return end && !reversed ? *end : start; }
};

/// The items that one tool cuts, in order.
struct JobTool {
    std::string name;                // as the file calls it, "T1"; "all" where files have no tools
    std::optional<double> diameter;  // mm
    std::vector<JobItem> items;
};

/// Past these a file is refused, since every item costs memory.
constexpr std::size_t max_items = 5'000'000;

enum class JobFormat { excellon, csv, tsplib };
enum class JobUnits { millimetres, inches };

/// Millimetres in one unit.
constexpr double mm_of(JobUnits units) { return units == JobUnits::inches ? 25.4 : 1.0; }

/// Everything that was read from one file.
struct MachiningJob {
    std::string file_name;
    JobFormat format = JobFormat::csv;
    JobUnits units = JobUnits::millimetres;  // of the file
    std::string text;            // the file as read; writers of the same format copy from it
    std::vector<JobTool> tools;  // in the order of their first use
};

}  // namespace nmk_job
