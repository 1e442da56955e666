// standard_input.h: a text as the standard input of the process, for a test.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "scratch_directory.h"

/// The text is standard input until the object is destroyed.
class StandardInput {
  public:
    explicit StandardInput(const std::string& text) : m_former(::dup(STDIN_FILENO)) {
        const int file = ::open(m_directory.file("input", text).c_str(), O_RDONLY);
        EXPECT_GE(file, 0);
        ::dup2(file, STDIN_FILENO);
        ::close(file);
    }
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;
    ~StandardInput() {
        ::dup2(m_former, STDIN_FILENO);
        ::close(m_former);
    }

  private:
    ScratchDirectory m_directory;
    int m_former;
};
