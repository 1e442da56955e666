// electrode_runs.h: files for electrodes, and runs of nmk electrode over them.
#pragma once

#include <gtest/gtest.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "app/shell/command_runner.h"
#include "commands/electrode/electrode_command.h"
#include "scratch_directory.h"

namespace nmk_electrode {

using Words = std::vector<std::string>;

inline nmk_shell::Printed electrode(Words arguments) {
    arguments.insert(arguments.begin(), "electrode");
    return nmk_shell::run(arguments);
}

/// The same with a reporter in place of the terminal's; `words` are without "electrode".
inline nmk_shell::Printed electrode_with(nmkProgressBreak& progress, const Words& words) {
    const auto options = nmk_shell::read_options(declare_options, words);
    std::ostringstream out, err;
    const int code = run_electrode(*options, out, err, progress);
    return {code, out.str(), err.str()};
}

/// Stops when it is first asked.
class StopAtOnce : public nmkProgressBreak {
  public:
    int jump_to(double) override { return 1; }
};

/// The files of an electrode, and the name of an archive beside them.
class ElectrodeFiles : public testing::Test {
  protected:
    ElectrodeFiles() {
        std::filesystem::create_directories(path("data/sub"));
        scratch.file("g", "geometry");
        scratch.file("m", "<m/>");
        scratch.file("a.ngk", "additional");
        scratch.file("data/1", "one");
        scratch.file("data/sub/2", "two");
    }

    std::string path(const std::string& name) const { return scratch.path() + "/" + name; }

    Words entry(const std::string& name) const {
        return {"--entry", name, "--geometry", path("g"), "--metadata", path("m")};
    }

    Words words_with(Words words, const std::vector<std::string>& names) const {
        for (const std::string& name : names) {
            for (const std::string& word : entry(name)) words.push_back(word);
        }
        return words;
    }
    nmk_shell::Printed with_entries(const Words& words,
                                    const std::vector<std::string>& names) const {
        return electrode(words_with(words, names));
    }

    static nmk_shell::Printed stopped(const Words& words) {
        StopAtOnce progress;
        return electrode_with(progress, words);
    }

    ScratchDirectory scratch;
    const std::string zip = path("out.zip");
};

}  // namespace nmk_electrode
