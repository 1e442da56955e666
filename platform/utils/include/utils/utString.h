// utString.h: a narrow string with a null state.
//
// It has two empty states: the null string, which has no buffer, and the empty text. They compare
// unequal, and many operations of the kernel test for the null string and not for the empty text.
// The text is a sequence of bytes: nothing here interprets them, and nul bytes inside are kept.
// Positions and lengths count bytes. Numbers are written and read the same way in every locale.
#pragma once

#include <utils/utExport.h>

#include <compare>
#include <concepts>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

/// Selects the constructor that takes ownership of a buffer.
struct utStringClaim {};

/// An integer that is written as a number: any but the character types.
template <class T>
concept utWritableInteger =
    std::integral<T> && !std::same_as<T, char> && !std::same_as<T, wchar_t> &&
    !std::same_as<T, char8_t> && !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

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

    /// Takes ownership of a nul-terminated buffer made with new[]; null gives the null string. The
    /// text is what precedes the nul.
    utString(utStringClaim, char* buffer);

    /// A copy of a text, which may be a part of this string; null makes this the null string.
    utString& operator=(const char* text);

    /// Makes this the null string.
    void set_invalid() noexcept { m_text.reset(); }

    /// True for the null string only.
    bool is_null() const noexcept { return !m_text.has_value(); }

    /// True for the null string and for the empty text.
    bool is_empty() const noexcept { return length() == 0; }

    /// Bytes of the text; 0 for the null string.
    int length() const noexcept { return m_text ? static_cast<int>(m_text->size()) : 0; }

    /// The text, terminated by a nul; null for the null string. Valid until the string changes.
    const char* c_str() const noexcept { return m_text ? m_text->c_str() : nullptr; }

    /// The text; empty for the null string. Valid until the string changes.
    std::string_view view() const noexcept {
        return m_text ? std::string_view(*m_text) : std::string_view();
    }

    /// The byte at `index`, 0 outside the text.
    char operator[](int index) const noexcept {
        return index >= 0 && index < length() ? (*m_text)[static_cast<std::size_t>(index)] : '\0';
    }

    /// Appends. A null argument appends nothing; appending a text, even the empty one, turns the
    /// null string into a text.
    utString& operator+=(const utString& text);
    utString& operator+=(const char* text);
    utString& operator+=(char character);

    /// Appends, as += does.
    utString& operator<<(const utString& text) { return *this += text; }
    utString& operator<<(const char* text) { return *this += text; }
    utString& operator<<(char character) { return *this += character; }
    utString& operator<<(std::string_view text);

    /// Appends an integer in decimal; a bool as 0 or 1.
    template <utWritableInteger Integer>
    utString& operator<<(Integer value) {
        if constexpr (std::is_signed_v<Integer>) {
            return append_signed(value);
        } else {
            return append_unsigned(value);
        }
    }

    /// Appends a number with the fewest digits that read back to the same number: 1.02, 100000, 0.
    /// From 1e16 upwards and below 1e-4 it is written with an exponent of at least two digits:
    /// 1e+16, 2.5e-07. An integer has no decimal point. Special values: -0, inf, -inf, and nan for
    /// every NaN.
    utString& operator<<(double value);

    /// Byte index of the first `sub` at or after `start`, -1 if there is none or either string is
    /// null. An empty text is found at `start` itself while that is not past the end; a negative
    /// start counts as 0.
    int locate_substring(const utString& sub, int start = 0) const noexcept;

    /// Removes the first token from the front: skips leading delimiters, moves the text before the
    /// next delimiter (or the end) to `taken`, and removes that delimiter too. Returns 1 when there
    /// was a token; otherwise 0, `taken` becomes null, and a text becomes empty.
    int extract_string(char delimiter, utString& taken);

    /// The `count` bytes from `start`, limited to the text; the null string for the null string.
    utString substring(int start, int count) const;

    /// Reads the number at byte `position`, after white space and at most one sign, and moves
    /// `position` to the byte after it. Returns 1; or 0, with both arguments unchanged, when there
    /// is no number or it does not fit its type. Reads everything that << writes.
    int parse(double& value, int& position) const noexcept;
    int parse(int& value, int& position) const noexcept;

    /// Compares byte by byte. The null string equals only itself, and sorts before the empty text.
    friend bool operator==(const utString&, const utString&) noexcept = default;
    friend bool operator==(const utString& left, const char* right) noexcept {
        return right == nullptr ? left.is_null() : !left.is_null() && left.view() == right;
    }
    friend auto operator<=>(const utString& left, const utString& right) noexcept {
        return left.m_text <=> right.m_text;
    }

  private:
    utString& append_signed(long long value);
    utString& append_unsigned(unsigned long long value);
    utString& append(std::string_view text);

    std::optional<std::string> m_text;
};

/// The concatenation of both; the null string only when both are null.
UT_EXPORT utString operator+(utString left, const utString& right);
UT_EXPORT utString operator+(utString left, const char* right);
UT_EXPORT utString operator+(const char* left, const utString& right);
UT_EXPORT utString operator+(utString left, char right);

/// Writes the bytes; writes nothing for the null string.
UT_EXPORT std::ostream& operator<<(std::ostream& stream, const utString& text);
