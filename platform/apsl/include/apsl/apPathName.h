// apPathName.h: the wide text of a file's or a directory's name.
#pragma once

#include <apsl/apString.h>

#include <utility>

/// Holds the text as it was given: nothing is normalised, and no file is looked at.
class apPathName {
  public:
    apPathName() noexcept = default;
    explicit apPathName(apString text) : m_text(std::move(text)) {}

    const apString& text() const noexcept { return m_text; }

    /// True for the default name and for the empty text.
    bool is_empty() const noexcept { return m_text.is_empty(); }

    friend bool operator==(const apPathName&, const apPathName&) noexcept = default;

  private:
    apString m_text;
};
