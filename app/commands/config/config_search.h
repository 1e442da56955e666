// config_search.h: the document that a configuration is read from, and what there is to say of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/config/config_options.h"
#include "text/result.h"

namespace nmk_config {

/// A file of the configuration beside the one that is chosen.
struct OtherFile {
    std::string file;
    int version = 0;  // by its name; 0 without one
    std::string reason;
};

/// What is wrong with a document; 0 for line and column where it is the file as a whole.
struct DocumentProblem {
    int line = 0, column = 0;
    std::string message;
};

struct ConfigFacts {
    std::string file;  // the chosen file, also where it does not exist
    std::string reason;
    std::vector<OtherFile> others;  // from the newest down
    std::string root;               // empty where the document was not read
    std::optional<int> version;
    std::optional<DocumentProblem> problem;
};

/// Searches as nmkConfXMLReader does, and reads the document. An Error is about standard input.
nmk_text::Result<ConfigFacts> search(const ConfigName& name,
                                     const std::optional<VersionRange>& versions);

}  // namespace nmk_config
