// scratch_directory.h: a folder of its own for a test, gone when the test ends.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class ScratchDirectory {
  public:
    ScratchDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "nmk_test_XXXXXX").string();
        EXPECT_NE(::mkdtemp(name.data()), nullptr);
        m_path = name;
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& path() const { return m_path; }

    /// Makes a file and returns its whole name.
    std::string file(const std::string& name, const std::string& bytes) const {
        std::ofstream(m_path + "/" + name, std::ios::binary) << bytes;
        return m_path + "/" + name;
    }

    std::size_t file_count() const {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(m_path)) {
            ++count;
        }
        return count;
    }

  private:
    std::string m_path;
};
