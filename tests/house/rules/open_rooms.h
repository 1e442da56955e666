// open_rooms: directories that a rule does not hold for yet, from tests/house/open_rooms.txt.
//
// Each line is "RULE PATH"; '#' begins a comment. The list can only shrink: a path without findings
// is itself a finding.
#pragma once

#include "house/rules/rules.h"

namespace nmk_house {

/// The findings of a rule without those in its open rooms, and one for each room that needs no
/// line any more. A finding belongs to the file with which it begins.
Findings without_open_rooms(const std::filesystem::path& root, const std::string& rule,
                            const Findings& all);

}  // namespace nmk_house
