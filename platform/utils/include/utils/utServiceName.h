// utServiceName: the name under which a service is registered.
#pragma once

#include <utils/utString.h>

#include <compare>

class UT_EXPORT utServiceName {
  public:
    /// The empty name, under which no service can be registered.
    utServiceName() = default;

    /// A copy of `name`; null and the empty text give the empty name.
    explicit utServiceName(const char* name) : m_text(name) {}
    explicit utServiceName(utString name) : m_text(std::move(name)) {}

    bool is_empty() const noexcept { return m_text.is_empty(); }

    /// The text of the name.
    const utString& text() const noexcept { return m_text; }

    /// Compares byte by byte; all empty names are equal.
    friend bool operator==(const utServiceName& a, const utServiceName& b) noexcept {
        return a.m_text.view() == b.m_text.view();
    }
    friend auto operator<=>(const utServiceName& a, const utServiceName& b) noexcept {
        return a.m_text.view() <=> b.m_text.view();
    }

  private:
    utString m_text;
};
