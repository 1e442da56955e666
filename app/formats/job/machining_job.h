// machining_job.h: the holes and slots of one file, as every reader returns them.
//
// The items are one array in the order of the file, which nothing rearranges: the position of an
// item in it is the number of the item, and an order is a list of such numbers (job_order.h).
// Lengths are millimetres, whatever the unit of the file (a TSPLIB file has no unit and is read as
// millimetres).
#pragma once

#include <geometry/giPoint3.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "text/result.h"

namespace nmk_job {

/// A hole (one point), or a slot or line (two points).
struct JobItem {
    giPoint3 start;               // mm; where the cut begins in the file
    std::optional<giPoint3> end;  // mm; empty for a hole
    std::uint32_t tool = 0;       // position in MachiningJob::tools
};

struct JobTool {
    std::string name;                // as in the file, "T1"; "all" for a format without tools
    std::optional<double> diameter;  // mm
};

/// What the reader of a format keeps for the writer of the same format.
struct JobSource {
    virtual ~JobSource() = default;
};

/// A file with more items is refused, since every item costs memory.
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
    std::string text;            // the file as read; a writer of the same format copies from it
    std::vector<JobTool> tools;  // in the order of their first use; each cuts at least one item
    std::vector<JobItem> items;  // in the order of the file
    std::vector<std::size_t> fences;  // ascending numbers of items: an order keeps the first so
                                      // many items of the file first, and each tool is on one side
    bool has_fixed_parts = false;     // routed paths or patterns, which the items do not have
    std::vector<std::string> notes;   // remarks for a person, a sentence each without its full stop
    std::shared_ptr<const JobSource> source;  // null where the writer needs no more than the text
};

}  // namespace nmk_job
