// result.h: a value, or an error message of one line.
//
// Every operation of the tool that can fail on outside input returns a Result. A reader may throw
// an Error internally; value_or_error turns it into a Result before it leaves the reader.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace nmk_text {

/// Why something could not be read, written or understood: one line for a person.
struct Error {
    std::string file_name;  // empty if the error is not about a file
    std::size_t line = 0;   // from 1; 0 if the error is not about a line
    std::string message;    // what was found, and what was expected

    /// "plate.drl:12: unknown tool T9; the header defines T1 to T4"
    std::string text() const {
        const std::string where = line > 0 ? file_name + ":" + std::to_string(line) : file_name;
        return where.empty() ? message : where + ": " + message;
    }

    /// The same error in a file of this name.
    Error in_file(const std::string& name) const { return {name, line, message}; }
};

/// A value or an Error. Access to the one that it does not have throws std::bad_variant_access.
template <class Value>
class [[nodiscard]] Result {
  public:
    Result(Value value) : m_content(std::move(value)) {}
    Result(Error error) : m_content(std::move(error)) {}

    explicit operator bool() const { return std::holds_alternative<Value>(m_content); }

    Value& operator*() & { return std::get<Value>(m_content); }
    const Value& operator*() const& { return std::get<Value>(m_content); }
    Value&& operator*() && { return std::get<Value>(std::move(m_content)); }
    Value* operator->() { return &std::get<Value>(m_content); }
    const Value* operator->() const { return &std::get<Value>(m_content); }

    const Error& error() const { return std::get<Error>(m_content); }

  private:
    std::variant<Value, Error> m_content;
};

/// Success without a value, or an Error. Access to an Error that it does not have throws
/// std::bad_optional_access.
template <>
class [[nodiscard]] Result<void> {
  public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}

    explicit operator bool() const { return !m_error; }

    const Error& error() const { return m_error.value(); }

  private:
    std::optional<Error> m_error;
};

/// What `read` returns, or the Error that it throws, in the file of this name.
template <class Read>
auto value_or_error(const std::string& file_name, const Read& read) -> Result<decltype(read())> {
    try {
        return read();
    } catch (const Error& error) {
        return error.in_file(file_name);
    }
}

}  // namespace nmk_text
