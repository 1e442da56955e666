// scoped_zone.h: another time zone for a test, and the former one again when it ends.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

class ScopedZone {
  public:
    explicit ScopedZone(const char* zone) {
        if (const char* before = std::getenv("TZ")) m_before = before;
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    ScopedZone(const ScopedZone&) = delete;
    ScopedZone& operator=(const ScopedZone&) = delete;
    ~ScopedZone() {
        m_before ? ::setenv("TZ", m_before->c_str(), 1) : ::unsetenv("TZ");
        ::tzset();
    }

  private:
    std::optional<std::string> m_before;
};
