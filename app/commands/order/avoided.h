// avoided.h: the keep-outs that the travel avoids.
#pragma once

#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <memory>
#include <string>
#include <vector>

#include "commands/order/travel_measure.h"
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

}  // namespace nmk_order
