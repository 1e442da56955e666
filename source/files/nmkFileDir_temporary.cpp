// nmkFileDir_temporary.cpp: names that are not in use yet.
#include <nmktoolbox/files/nmkFileDir.h>
#include <winapi/file_names.h>
#include <winapi/processes.h>

#include <cstdlib>
#include <string>

namespace {

// Existing names are only met where another process creates them on purpose; then the search ends.
constexpr int max_rounds = 10000;

std::string prefix_of_round(int round) {
    static const auto process = GetCurrentProcessId();
    return "nmk_" + std::to_string(process) + "_" + std::to_string(round) + "_";
}

}  // namespace

nmkFileDir::nmkFileDir(nmkFileDirTmpFilename, const utString& suffix,
                       const apIStringEncoding* encoding)
    : m_encoding(choose_ut_encoding(encoding)) {
    for (int round = 0; round < max_rounds; ++round) {
        if (char* name = _tempnam(nullptr, prefix_of_round(round).c_str())) {
            normalise(name);
            std::free(name);
            m_path += suffix;
        }
        // The suffix came after the system's own look, so the whole name is looked for again.
        if (m_path.is_null() || exist() == 0) return;
    }
    m_path.set_invalid();
}
