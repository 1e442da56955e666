// apString.h: a wide text that can also be invalid.
//
// One UTF-16 code unit in each wchar_t. The invalid string has no text; it equals only itself, and
// every operation takes it for a string of length 0.
#pragma once

#include <apsl/apStringPos.h>
#include <utils/utExport.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

class UT_EXPORT apString {
  public:
    /// The invalid string.
    apString() noexcept = default;

    /// A copy of a text; null gives the invalid string.
    apString(const wchar_t* text) {
        if (text != nullptr) m_text.emplace(text);
    }
    explicit apString(std::wstring text) : m_text(std::move(text)) {}
    explicit apString(std::wstring_view text) : m_text(std::in_place, text) {}

    bool is_valid() const noexcept { return m_text.has_value(); }

    /// True for the invalid string and for the empty text.
    bool is_empty() const noexcept { return length() == 0; }

    /// Code units of the text; 0 for the invalid string.
    int length() const noexcept { return m_text ? static_cast<int>(m_text->size()) : 0; }

    std::wstring_view view() const noexcept {
        return m_text ? std::wstring_view(*m_text) : std::wstring_view();
    }

    /// The text, ended by a nul; null for the invalid string. Valid until the string changes.
    const wchar_t* c_str() const noexcept { return m_text ? m_text->c_str() : nullptr; }

    /// Replaces every `from` by `to`, left to right and without overlap, and returns how many there
    /// were. What was put in is not searched again. An empty `from` replaces nothing.
    int replace_all(const apString& from, const apString& to);

    /// True when the text ends in `end`, which the empty text always does.
    bool ends_with(const apString& end) const noexcept { return view().ends_with(end.view()); }

    apStringPos begin() const noexcept { return apStringPos(0); }
    /// The position behind the last code unit.
    apStringPos end() const noexcept { return apStringPos(length()); }

    /// The text before `position`, which is cut to the text; invalid for the invalid string.
    apString left(const apStringPos& position) const;

    friend bool operator==(const apString&, const apString&) noexcept = default;

  private:
    std::optional<std::wstring> m_text;
};
