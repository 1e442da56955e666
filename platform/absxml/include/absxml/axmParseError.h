// axmParseError.h: why a document could not be read.
#pragma once

#include <apsl/apString.h>

#include <utility>

class axmParseError {
  public:
    /// No error.
    axmParseError() = default;
    axmParseError(apString message, int line_number, int column_number)
        : m_message(std::move(message)),
          m_line_number(line_number),
          m_column_number(column_number) {}

    /// What was found and what was expected, one line without a full stop; empty without an error.
    const apString& message() const noexcept { return m_message; }

    /// Both from 1, columns in characters; 0 where the problem is the file as a whole.
    int line_number() const noexcept { return m_line_number; }
    int column_number() const noexcept { return m_column_number; }

  private:
    apString m_message = L"";
    int m_line_number = 0;
    int m_column_number = 0;
};
