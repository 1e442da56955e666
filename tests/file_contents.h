// file_contents.h: the bytes of a file.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

/// Every byte of the file; empty if it cannot be read.
inline std::string contents_of(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}
