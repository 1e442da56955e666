// avoided.h: the keep-outs that the travel avoids, and the items that they block.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/order/order_job.h"
#include "formats/job/machining_job.h"
#include "formats/keep_outs/keep_out_reader.h"
#include "text/result.h"

namespace nmk_order {

/// The keep-outs of a file and the shortest ways around them. It remembers the ways that it has
/// found, so it belongs to one thread.
class Avoided {
  public:
    /// The ways are the shortest by this measure.
    Avoided(std::string file_name, std::vector<nmk_keep_outs::KeepOut> keep_outs,
            const TravelMeasure& measure = {});

    const std::string& file_name() const { return m_file_name; }
    const std::vector<nmk_keep_outs::KeepOut>& keep_outs() const { return m_keep_outs; }
    /// With their clearances, as the library takes them.
    const std::vector<nmkTravelKeepOut>& shapes() const { return m_problem.keep_outs; }
    const nmkTravelWays& ways() const { return m_ways; }

    /// "clamps.csv:3" of a keep-out.
    std::string name(int keep_out) const;

  private:
    std::string m_file_name;
    std::vector<nmk_keep_outs::KeepOut> m_keep_outs;
    nmkTravelProblem m_problem;
    nmkTravelWays m_ways;
};

/// The keep-outs of a file, with ways by their length; null for no name.
nmk_text::Result<std::shared_ptr<const Avoided>> read_avoided(const std::string& file_name);

/// The same keep-outs with ways by the measure of a job, whose rates may depend on its unit; null
/// for none.
std::shared_ptr<const Avoided> avoided_with(const std::shared_ptr<const Avoided>& avoided,
                                            const TravelMeasure& measure);

/// An item that is not to be cut, and why.
struct BlockedItem {
    std::size_t item;
    std::string reason;  // "inside clamps.csv:3"
};

/// The items that begin or end inside a keep-out, whose cut crosses one, or that keep-outs separate
/// from the start and the end place; where both are free, from most of the items.
/// An Error where the start or the end place is blocked itself.
nmk_text::Result<std::vector<BlockedItem>> blocked_items(const nmk_job::MachiningJob& job,
                                                         const TravelEnds& ends);

/// "hole 12 of T1 at (3, 4) mm: inside clamps.csv:3", counted from 1 in the order of the file.
std::string blocked_text(const nmk_job::MachiningJob& job, const BlockedItem& blocked);

/// Why a job is not ordered, and the exit code; no text where it is.
struct Refusal {
    std::string text;
    int code = 0;
};

/// Refuses a job with blocked items, or marks these as left out of the order, with a note of the
/// job for each; refuses it where none is left.
Refusal avoid_keep_outs(nmk_job::MachiningJob& job, OrderRequest& request, bool skips_blocked);

}  // namespace nmk_order
