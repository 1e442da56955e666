// tree_samples.h: trees of files, made and read back whole.
#pragma once

#include <nmktoolbox/files/nmkFileDir.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "file_contents.h"

inline nmkFileDir named(const std::string& text) { return nmkFileDir(text.c_str(), nullptr); }

inline void put(const std::string& file, const std::string& bytes) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

/// Every entry below the directory: a file with "=" and its contents, a symlink with "->" and where
/// it leads, a directory with "/".
inline std::map<std::string, std::string> tree(const std::string& directory) {
    namespace fs = std::filesystem;
    std::map<std::string, std::string> entries;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        const std::string name = entry.path().lexically_relative(directory).string();
        if (entry.is_symlink()) {
            entries[name] = "->" + fs::read_symlink(entry.path()).string();
        } else {
            entries[name] = entry.is_directory() ? "/" : "=" + contents_of(entry.path().string());
        }
    }
    return entries;
}
