// nmkWideConverter: a wide buffer that is used again for one text after the other.
//
// For one user at a time. The conversion is that of nmkMultiByteToWideChar.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <memory>

class NMKTOOLBOX_EXPORT nmkWideConverter {
  public:
    /// Starts with room for 256 code units, the nul at the end among them.
    nmkWideConverter();

    /// The wide form of `text`, ended by a nul. Good until the next call, and never longer than the
    /// converter. The null string gives the empty text.
    wchar_t* convert(const utString& text);

    /// Code units that there is room for now. It never shrinks.
    int capacity() const { return m_capacity; }

  private:
    /// Doubles the capacity until it exceeds `length`; what the buffer held is lost then.
    void expand_for(int length);

    int m_capacity;
    std::unique_ptr<wchar_t[]> m_buffer;
};
