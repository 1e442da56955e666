// speaks_for_itself: references to documents outside the tree, in any text file of it.
//
// The words that are looked for are written in two pieces here, so that this file passes.
#include <algorithm>
#include <cctype>

#include "house/rules/rules.h"
#include "house/rules/source_text.h"

namespace nmk_house {

namespace fs = std::filesystem;

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_name_part(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    return text;
}

/// The positions after `word`, where it is a word of its own in the line.
std::vector<std::size_t> ends_of(const std::string& line, const std::string& word) {
    std::vector<std::size_t> ends;
    for (std::size_t at = line.find(word); at != line.npos; at = line.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        const bool begins = at == 0 || !is_name_part(line[at - 1]);
        if (begins && (end == line.size() || !is_name_part(line[end]))) ends.push_back(end);
    }
    return ends;
}

/// The number of digits from a position on.
std::size_t digits_at(const std::string& line, std::size_t at) {
    std::size_t end = at;
    while (end < line.size() && is_digit(line[end])) ++end;
    return end - at;
}

std::size_t skip(const std::string& line, std::size_t at, const char* what) {
    return std::min(line.find_first_not_of(what, at), line.size());
}

bool numbers_a_chapter(const std::string& line) {
    for (const char* word : {"pa"
                             "rt",
                             "pa"
                             "rts"}) {
        for (const std::size_t end : ends_of(line, word)) {
            const std::size_t number = skip(line, end, " ");
            const std::size_t digits = digits_at(line, number);
            const std::size_t point = number + digits;
            if (number > end && digits > 0 && point < line.size() && line[point] == '.' &&
                digits_at(line, point + 1) > 0) {
                return true;
            }
        }
    }
    return false;
}

bool numbers_a_task(const std::string& line) {
    for (const char* word : {"iss"
                             "ue",
                             "iss"
                             "ues"}) {
        for (const std::size_t end : ends_of(line, word)) {
            const std::size_t number = skip(line, end, " #");
            if (number > end && digits_at(line, number) > 0) return true;
        }
    }
    return false;
}

bool names_a_document(const std::string& line) {
    for (const char* article : {"the", "this"}) {
        for (const char* word : {" sp"
                                 "ec",
                                 " sp"
                                 "ecification"}) {
            if (!ends_of(line, article + std::string(word)).empty()) return true;
        }
    }
    const std::string folder =
        "sha"
        "red/";
    for (const char* name : {"sp"
                             "ec",
                             "des"
                             "ign",
                             "sty"
                             "le",
                             "refe"
                             "rence"}) {
        if (line.find(folder + name) != line.npos) return true;
    }
    return line.find(
               "sp"
               "ec.md") != line.npos;
}

bool is_left_out(const fs::path& directory) {
    const std::string name = directory.filename().string();
    return name == ".git" || name == ".cache" || name == "build" || name.starts_with("build-");
}

void check_file(const fs::path& file, const std::string& name, Findings& findings) {
    const std::string text = read_text(file);
    if (text.find('\0') != text.npos) return;  // not a text
    int number = 0;
    for (const std::string& line : lines_of(lower(text))) {
        ++number;
        if (numbers_a_chapter(line) || numbers_a_task(line) || names_a_document(line)) {
            findings.push_back(name + ":" + std::to_string(number) +
                               ": refers to a document outside the tree; say the thing itself");
        }
    }
}

}  // namespace

Findings speaks_for_itself(const fs::path& root) {
    Findings findings;
    std::size_t files = 0;
    auto entry = fs::recursive_directory_iterator(root);
    for (; entry != fs::recursive_directory_iterator(); ++entry) {
        if (entry->is_directory() && is_left_out(entry->path())) {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file()) {
            ++files;
            check_file(entry->path(), entry->path().lexically_relative(root).generic_string(),
                       findings);
        }
    }
    if (files == 0) findings.push_back("the tree has no files to check");
    return findings;
}

}  // namespace nmk_house
