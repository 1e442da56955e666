// standard_input.h: a text, or a pipe, as the standard input of the process, for a test.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <utility>

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

/// A pipe with a text of up to 64 KiB is standard input until the object is destroyed.
class PipedInput {
  public:
    enum class Writer { closed, waiting };

    /// With a writer that waits, nothing follows the text and it does not end.
    explicit PipedInput(const std::string& text, Writer writer = Writer::closed)
        : m_former(::dup(STDIN_FILENO)) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        EXPECT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        ::dup2(ends[0], STDIN_FILENO);
        ::close(ends[0]);
        m_writer = ends[1];
        if (writer == Writer::closed) ::close(std::exchange(m_writer, -1));
    }
    PipedInput(const PipedInput&) = delete;
    PipedInput& operator=(const PipedInput&) = delete;
    ~PipedInput() {
        if (m_writer >= 0) ::close(m_writer);
        ::dup2(m_former, STDIN_FILENO);
        ::close(m_former);
    }

  private:
    int m_former;
    int m_writer = -1;
};
