// working_folder.h: another current folder for a test, and the old one again when it ends.
#pragma once

#include <filesystem>
#include <string>

class WorkingFolder {
  public:
    explicit WorkingFolder(const std::string& folder) : m_before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;
    ~WorkingFolder() { std::filesystem::current_path(m_before); }

  private:
    std::filesystem::path m_before;
};
