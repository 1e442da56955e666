// nmkMessageFormatter: formatted messages of any length.
//
// The texts returned are in a buffer of the formatter: valid until its next call, and for one user
// at a time. Numbers have "." for a point and no separators, whatever the locale.
#pragma once

#include <nmktoolbox/export.h>

#include <memory>

class NMKTOOLBOX_EXPORT nmkMessageFormatter {
  public:
    /// Starts with room for 127 bytes and the nul; the text is empty.
    nmkMessageFormatter();

    /// What printf makes of the format and the arguments, which are not checked against each other.
    /// Where that fails, or `format` is null, it returns the text of the call before. An
    /// argument may be such a text.
    const char* unchecked_concatenate(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;

    /// The format with each "%s" replaced by the next of `arguments`, an array ended by a null
    /// pointer. Every other conversion is left unchanged, "%%" too, and so does a "%s" that has no
    /// argument left. A null array has no arguments; null `format` as above.
    const char* vconcatenate(const char* format, char** arguments);

    /// Bytes that there is room for now, without the nul. It never shrinks.
    int capacity() const { return m_capacity; }

  private:
    /// Makes a buffer of `length` + 2 bytes, if `length` + 1 exceeds the capacity.
    void allocate(int length);

    /// Takes over a text of `length` bytes and a nul.
    const char* store(const char* text, int length);

    int m_capacity;
    std::unique_ptr<char[]> m_buffer;
};
