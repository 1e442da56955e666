// no_prints: names that print or end the process, looked for in the code of the library.
#include <algorithm>
#include <array>
#include <string_view>

#include "house/rules/rules.h"
#include "house/rules/source_text.h"

namespace nmk_house {

namespace {

constexpr std::string_view streams[] = {"cout",          "cerr",         "clog",   "wcout",
                                        "wcerr",         "wclog",        "stdout", "stderr",
                                        "STDOUT_FILENO", "STDERR_FILENO"};
constexpr std::string_view functions[] = {
    "printf",  "fprintf", "vprintf", "vfprintf",   "wprintf", "fwprintf",  "dprintf", "puts",
    "putchar", "putc",    "fputs",   "fputc",      "fputws",  "putwchar",  "perror",  "psignal",
    "exit",    "_exit",   "_Exit",   "quick_exit", "abort",   "terminate", "raise"};
constexpr std::string_view macros[] = {"assert", "__builtin_trap", "__builtin_abort"};

// One private operation writes a diagnosis where the environment asks for it. It has a file of its
// own, so that nothing else is excused with it.
constexpr std::string_view excused = "source/files/nmkFileDir_diagnosis.cpp";

bool is_name_part(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

bool contains(const auto& names, std::string_view name) {
    return std::ranges::find(names, name) != std::end(names);
}

/// Whether a name that ends at `end` is called there, and as no member of an object.
bool is_called(std::string_view code, std::size_t begin, std::size_t end) {
    const std::size_t next = code.find_first_not_of(" \t\n", end);
    const bool member =
        begin > 0 && (code[begin - 1] == '.' || (begin > 1 && code.substr(begin - 2, 2) == "->"));
    return next != code.npos && code[next] == '(' && !member;
}

void check_file(const std::string& file, std::string_view text, Findings& findings) {
    const std::string code = split(text).code;
    for (std::size_t at = 0; at < code.size();) {
        if (!is_name_part(code[at])) {
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < code.size() && is_name_part(code[end])) ++end;
        const std::string_view name = std::string_view(code).substr(at, end - at);
        const bool called = is_called(code, at, end);
        if (contains(streams, name) ||
            (called && (contains(functions, name) || contains(macros, name)))) {
            findings.push_back(file + ":" + std::to_string(line_at(code, at)) + ": " +
                               std::string(name) +
                               "; the library must not print or end the process");
        }
        at = end;
    }
}

}  // namespace

Findings no_prints(const std::filesystem::path& root) {
    Findings findings;
    const std::vector<std::string> files = files_below(root, {"include", "source"}, {".h", ".cpp"});
    if (files.empty()) findings.push_back("include, source: no files to check");
    for (const std::string& file : files) {
        if (file != excused) check_file(file, read_text(root / file), findings);
    }
    return findings;
}

}  // namespace nmk_house
