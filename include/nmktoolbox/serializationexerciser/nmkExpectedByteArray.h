// nmkExpectedByteArray: bytes, or the reason why there are none.
#pragma once

#include <apsl/apByteArray.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <memory>
#include <string>

class NMKTOOLBOX_EXPORT nmkExpectedByteArray {
  public:
    /// No bytes, and an empty error.
    nmkExpectedByteArray();

    /// A copy of the bytes, and an empty error. An empty array is a value too.
    nmkExpectedByteArray(const apByteArray& value);

    /// No bytes, for the reason `error`; the null string and the empty text give an empty error.
    nmkExpectedByteArray(const utString& error);

    /// Copies share the bytes.
    nmkExpectedByteArray(const nmkExpectedByteArray&) = default;
    nmkExpectedByteArray& operator=(const nmkExpectedByteArray&) = default;

    /// True when there are bytes, also none of them.
    operator bool() const { return m_value != nullptr; }

    utString error() const;

    /// The bytes; null when there are none.
    std::shared_ptr<apByteArray> value_ptr() const { return m_value; }

  private:
    std::shared_ptr<apByteArray> m_value;
    std::string m_error_text;
};
