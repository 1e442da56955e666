// source_text: a C++ file taken apart into code, words and includes.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace nmk_house {

/// The same text twice, equally long and with the same line ends: the code with its comments and
/// literals replaced by blanks, and the comments and literals with the code replaced by blanks.
/// The quotation marks of literals remain in the code.
struct SplitText {
    std::string code;
    std::string words;
};

SplitText split(std::string_view text);

struct Include {
    int line;
    std::string name;  // as written between the marks
    bool quoted;       // "name" as opposed to <name>
};

/// The includes that are no comments. One whose name is a macro is returned with an empty name.
std::vector<Include> includes_of(std::string_view text);

/// The line, counted from 1, on which the byte at `position` is.
int line_at(std::string_view text, std::size_t position);

/// The bytes of a file; empty where it cannot be read.
std::string read_text(const std::filesystem::path& file);

std::vector<std::string> lines_of(std::string_view text);

/// Files below the given directories whose name ends with one of the endings, sorted, as paths
/// relative to the root with '/'. Directories that do not exist hold no files.
std::vector<std::string> files_below(const std::filesystem::path& root,
                                     const std::vector<std::string>& directories,
                                     const std::vector<std::string>& endings);

/// The directories of the tree that hold C++ of ours.
const std::vector<std::string>& code_directories();

}  // namespace nmk_house
