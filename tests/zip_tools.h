// zip_tools.h: what other programs say of a zip file.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace zip_tools {

/// What a command of the shell prints, and its exit code as a last line.
inline std::string output_of(const std::string& command) {
    std::FILE* const pipe = ::popen((command + " 2>&1; echo \"exit $?\"").c_str(), "r");
    std::string result;
    char part[4096];
    for (std::size_t count = 1; pipe != nullptr && count > 0;) {
        count = std::fread(part, 1, sizeof part, pipe);
        result.append(part, count);
    }
    if (pipe != nullptr) ::pclose(pipe);
    return result;
}

/// "exit 0" at the end where unzip finds every entry whole.
inline std::string unzip_test(const std::string& file) {
    return output_of("unzip -tqq '" + file + "'");
}

/// Runs Python with `z` as the open zip file.
inline std::string python(const std::string& file, const std::string& script) {
    return output_of("python3 -c 'import sys, zipfile; z = zipfile.ZipFile(sys.argv[1]); " +
                     script + "' '" + file + "'");
}

}  // namespace zip_tools
