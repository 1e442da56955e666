// utString.h: a narrow text that can also be no text at all.
//
// It has two empty states: the null string, which has no buffer, and the empty text. They compare
// unequal, and many operations of the kernel ask for the one and not for the other.
#pragma once

#include <utils/utExport.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

class UT_EXPORT utString {
  public:
    /// The null string.
    utString() noexcept = default;

    /// A copy of a text; null gives the null string, "" the empty text.
    utString(const char* text) {
        if (text != nullptr) m_text.emplace(text);
    }
    explicit utString(std::string text) : m_text(std::move(text)) {}
    explicit utString(std::string_view text) : m_text(std::in_place, text) {}

    bool is_null() const noexcept { return !m_text.has_value(); }

    /// True for the null string and for the empty text.
    bool is_empty() const noexcept { return length() == 0; }

    /// Bytes of the text; 0 for the null string.
    int length() const noexcept { return m_text ? static_cast<int>(m_text->size()) : 0; }

    /// The text, ended by a nul; null for the null string. Valid until the string changes.
    const char* c_str() const noexcept { return m_text ? m_text->c_str() : nullptr; }

    std::string_view view() const noexcept {
        return m_text ? std::string_view(*m_text) : std::string_view();
    }

    /// Byte by byte. The null string equals only itself, and sorts before the empty text.
    friend bool operator==(const utString&, const utString&) noexcept = default;
    friend auto operator<=>(const utString& left, const utString& right) noexcept {
        return left.m_text <=> right.m_text;
    }

  private:
    std::optional<std::string> m_text;
};
