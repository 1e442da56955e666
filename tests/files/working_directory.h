// working_directory.h: another current directory for a test, and the old one again when it ends.
#pragma once

#include <filesystem>
#include <string>

class WorkingDirectory {
  public:
    explicit WorkingDirectory(const std::string& directory)
        : m_before(std::filesystem::current_path()) {
        std::filesystem::current_path(directory);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    ~WorkingDirectory() { std::filesystem::current_path(m_before); }

  private:
    std::filesystem::path m_before;
};
