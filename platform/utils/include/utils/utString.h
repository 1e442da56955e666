// utString.h: a narrow text that can also be no text at all.
//
// It has two empty states: the null string, which has no buffer, and the empty text. They compare
// unequal, and many operations of the kernel ask for the one and not for the other. The text is a
// row of bytes: nothing here interprets them, and nul bytes inside are kept. Positions and lengths
// count bytes. Numbers are written and read the same way in every locale.
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

/// Picks the constructor that takes a buffer over instead of copying it.
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

    /// Takes over a nul-terminated buffer made with new[]; null gives the null string. The text is
    /// what stands before the nul.
    utString(utStringClaim, char* buffer);

    utString& operator=(const char* text);

    /// Makes this the null string.
    void set_invalid() noexcept { m_text.reset(); }

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

    /// The byte at `index`, 0 outside the text.
    char operator[](int index) const noexcept {
        return index >= 0 && index < length() ? (*m_text)[static_cast<std::size_t>(index)] : '\0';
    }

    /// Appends. Nothing is appended for a null argument; a text, even the empty one, makes a text
    /// of the null string.
    utString& operator+=(const utString& text);
    utString& operator+=(const char* text);
    utString& operator+=(char character);

    /// Appends likewise.
    utString& operator<<(const utString& text) { return *this += text; }
    utString& operator<<(const char* text) { return *this += text; }
    utString& operator<<(char character) { return *this += character; }
    utString& operator<<(std::string_view text);

    /// Appends a whole number in decimal; a truth value as 0 or 1.
    template <utWritableInteger Integer>
    utString& operator<<(Integer value) {
        if constexpr (std::is_signed_v<Integer>) {
            return append_signed(value);
        } else {
            return append_unsigned(value);
        }
    }

    /// Appends a number with the fewest digits that read back to the same number: 1.02, 100000, 0.
    /// Numbers of 1e16 and more or below 1e-4 are written with an exponent of at least two digits:
    /// 1e+16, 2.5e-07. A whole number has no point. Others: -0, inf, -inf, and nan for every NaN.
    utString& operator<<(double value);

    /// Byte index of the first `sub` at or after `start`, -1 if there is none or either string is
    /// null. An empty text is found at `start` itself while that is not past the end; a negative
    /// start counts as 0.
    int locate_substring(const utString& sub, int start = 0) const noexcept;

    /// Takes the text up to a delimiter from the front: skips leading delimiters, moves what
    /// stands before the next one (or the end) to `taken`, and drops that delimiter too. Answers 1
    /// while there was something to take; else 0, `taken` is null, and a text has become empty.
    int extract_string(char delimiter, utString& taken);

    /// The `count` bytes from `start`, cut to what there is; the null string for the null string.
    utString substring(int start, int count) const;

    /// Reads the number that stands at byte `position`, after white space and one sign at most,
    /// and moves `position` behind it. Answers 1; or 0, with both arguments unchanged, where no
    /// number stands or it does not fit its type. Everything that << writes is read.
    int parse(double& value, int& position) const noexcept;
    int parse(int& value, int& position) const noexcept;

    /// Byte by byte. The null string equals only itself, and sorts before the empty text.
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

/// The two texts after each other; null only when both are.
UT_EXPORT utString operator+(utString left, const utString& right);
UT_EXPORT utString operator+(utString left, const char* right);
UT_EXPORT utString operator+(const char* left, const utString& right);
UT_EXPORT utString operator+(utString left, char right);

/// Writes the bytes; nothing for the null string.
UT_EXPORT std::ostream& operator<<(std::ostream& stream, const utString& text);
