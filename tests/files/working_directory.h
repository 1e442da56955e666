// working_directory.h: another current folder for a test, and the old one again when it ends.
#pragma once

#include <filesystem>
#include <string>

class WorkingDirectory {
  public:
    explicit WorkingDirectory(const std::string& folder)
        : m_before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    ~WorkingDirectory() { std::filesystem::current_path(m_before); }

  private:
    std::filesystem::path m_before;
};
