// rules: what ARCHITECTURE.md and CONTRIBUTING.md promise, checked on the files of a source tree.
//
// Each rule reads a tree and returns what it found; an empty result means that the tree keeps the
// rule. A rule that cannot read what it needs reports that as a finding, so that a renamed file or
// a table that was moved cannot switch a rule off.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace nmk_house {

/// One line each: "file:line: what was found; what was expected".
using Findings = std::vector<std::string>;

/// Every #include follows an arrow of the tables in ARCHITECTURE.md, and a platform library
/// includes another one only where platform/CMakeLists.txt says that it needs it.
Findings include_arrows(const std::filesystem::path& root);

/// Every public header is included by the umbrella header of its subsystem, and every umbrella
/// header by nmktoolbox.h; umbrella headers include nothing else.
Findings umbrella_headers(const std::filesystem::path& root);

/// The library calls nothing that prints or ends the process.
Findings no_prints(const std::filesystem::path& root);

/// No file sends its reader to a document outside the tree.
Findings speaks_for_itself(const std::filesystem::path& root);

/// The first program in README.md and the block after it are examples/order_holes.cpp and its
/// expected output.
Findings readme_example(const std::filesystem::path& root);

/// Types are named in CapitalisedWords, private data members begin with m_, and no helper of ours
/// is in the global namespace. Rooms in tests/house/open_rooms.txt are left out.
Findings names(const std::filesystem::path& root);

/// Comments, messages and test names avoid the phrases of tests/house/wording.txt. Rooms in
/// tests/house/open_rooms.txt are left out.
Findings wording(const std::filesystem::path& root);

struct Rule {
    const char* name;
    Findings (*check)(const std::filesystem::path& root);
};

/// All rules, for the program house_rules.
std::span<const Rule> all_rules();

}  // namespace nmk_house
