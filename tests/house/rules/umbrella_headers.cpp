// umbrella_headers: what an umbrella header includes, compared with the directory beside it.
#include <algorithm>
#include <set>

#include "house/rules/rules.h"
#include "house/rules/source_text.h"

namespace nmk_house {

namespace fs = std::filesystem;

namespace {

/// Compares what a header includes with what it should, both as written between < and >.
void compare(const fs::path& root, const std::string& header, const std::set<std::string>& expected,
             Findings& findings) {
    std::set<std::string> included;
    for (const Include& include : includes_of(read_text(root / "include" / header))) {
        if (!included.insert(include.name).second) {
            findings.push_back("include/" + header + ": includes " + include.name + " twice");
        }
        if (!expected.contains(include.name)) {
            findings.push_back("include/" + header + ":" + std::to_string(include.line) +
                               ": includes " + include.name +
                               "; expected only what it is the umbrella of");
        }
    }
    for (const std::string& name : expected) {
        if (!included.contains(name)) {
            findings.push_back("include/" + header + ": lacks #include <" + name + ">");
        }
    }
}

}  // namespace

Findings umbrella_headers(const fs::path& root) {
    Findings findings;
    std::set<std::string> umbrellas;
    for (const std::string& file : files_below(root, {"include/nmktoolbox"}, {".h"})) {
        const fs::path name = fs::path(file).lexically_relative("include");
        const fs::path subsystem = name.parent_path();
        if (subsystem != "nmktoolbox") umbrellas.insert(subsystem.generic_string() + ".h");
    }
    for (const std::string& umbrella : umbrellas) {
        if (!fs::exists(root / "include" / umbrella)) {
            findings.push_back("include/" + umbrella + ": missing; expected the umbrella header");
            continue;
        }
        const std::string directory = umbrella.substr(0, umbrella.size() - 2);
        std::set<std::string> headers;
        for (const std::string& file : files_below(root, {"include/" + directory}, {".h"})) {
            headers.insert(fs::path(file).lexically_relative("include").generic_string());
        }
        compare(root, umbrella, headers, findings);
    }
    if (umbrellas.empty()) findings.push_back("include/nmktoolbox: no public headers");
    compare(root, "nmktoolbox.h", umbrellas, findings);
    return findings;
}

}  // namespace nmk_house
