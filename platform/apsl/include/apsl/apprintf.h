// apprintf.h: formatted output to the program's console, with the conversions of printf.
//
// The arguments carry their types along, so that no format can read what was not handed in. A
// conversion whose argument is missing is printed as it is written in the format; an argument of
// another type than its conversion is printed as what it is; arguments left over are ignored; %n
// prints nothing and consumes nothing. Length modifiers (l, ll, z, ...) are allowed and without
// effect. Numbers have "." for a point, whatever the locale.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

/// One argument of a format together with its type.
class apPrintArgument {
  public:
    enum class Kind { signed_integer, unsigned_integer, real, text, pointer };

    template <class T>
    requires(std::is_integral_v<T>) apPrintArgument(T value)
    noexcept
        : kind(std::is_signed_v<T> ? Kind::signed_integer : Kind::unsigned_integer),
          integer(static_cast<std::int64_t>(value)),
          bits(unsigned_of(value)) {}
    template <class T>
    requires(std::is_enum_v<T>) apPrintArgument(T value)
    noexcept : apPrintArgument(static_cast<std::underlying_type_t<T>>(value)) {}
    apPrintArgument(double value) noexcept : kind(Kind::real), real(value) {}
    apPrintArgument(const char* value) noexcept
        : kind(Kind::text), text(value != nullptr ? value : "(null)") {}
    apPrintArgument(std::string_view value) noexcept : kind(Kind::text), text(value) {}
    apPrintArgument(const std::string& value) noexcept : kind(Kind::text), text(value) {}
    apPrintArgument(const void* value) noexcept : kind(Kind::pointer), pointer(value) {}

    Kind kind;
    std::int64_t integer = 0;  // the value of an integer
    std::uint64_t bits = 0;    // the same, as the unsigned type of its own width reads it
    double real = 0.0;
    std::string_view text;  // borrowed
    const void* pointer = nullptr;

  private:
    template <class T>
    static std::uint64_t unsigned_of(T value) noexcept {
        if constexpr (std::is_same_v<T, bool>) {
            return value ? 1U : 0U;
        } else {
            return static_cast<std::make_unsigned_t<T>>(value);
        }
    }
};

/// The text that a format and its arguments give. A null format gives an empty text.
std::string ap_format_arguments(const char* format, std::span<const apPrintArgument> arguments);

/// Writes a text to the console as it is; returns the bytes written, negative on failure.
int ap_write_console(std::string_view text);

/// Formats and writes to standard output; returns the bytes written, negative on failure.
template <class... Arguments>
int apprintf(const char* format, const Arguments&... arguments) {
    if constexpr (sizeof...(arguments) == 0) {
        return ap_write_console(ap_format_arguments(format, {}));
    } else {
        const apPrintArgument list[] = {apPrintArgument(arguments)...};
        return ap_write_console(ap_format_arguments(format, list));
    }
}
