// result.h: a value, or the one line that says why there is none.
//
// Every operation of the tool that can fail on what comes from outside returns a Result. A reader
// may throw an Error from any depth of its own; value_or_error turns it into a Result before it
// leaves the reader.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace nmk_text {

/// Why something could not be read, written or understood: one line for a person.
struct Error {
    std::string file_name;  // empty where no file is meant
    std::size_t line = 0;   // from 1; 0 where no line is meant
    std::string message;    // what was found, and what was expected

    /// "plate.drl:12: unknown tool T9; the header defines T1 to T4"
    std::string text() const {
        const std::string where = line > 0 ? file_name + ":" + std::to_string(line) : file_name;
        return where.empty() ? message : where + ": " + message;
    }

    /// The same error in a file of this name.
    Error in_file(const std::string& name) const { return {name, line, message}; }
};

/// A value or an Error. Reading the one that is not there throws std::bad_variant_access.
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

/// Success without a value, or an Error. Reading an Error that is not there throws
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
