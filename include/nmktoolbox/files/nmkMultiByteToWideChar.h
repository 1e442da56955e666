// nmkMultiByteToWideChar: narrow text made wide.
//
// Narrow text is in the thread's code page, UTF-8 unless the host chose another. Wide text holds
// one UTF-16 code unit in each wchar_t. Each maximal ill-formed part becomes one U+FFFD; nothing is
// rejected. The null string counts as the empty text. NUL bytes inside are characters.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <cstddef>
#include <string>

class NMKTOOLBOX_EXPORT nmkMultiByteToWideChar {
  public:
    nmkMultiByteToWideChar() = delete;

    /// The wide form of `text`.
    static std::wstring convert(utString text);

    /// Code units of the wide form.
    static std::size_t length(utString text);

  private:
    friend struct nmkMultiByteToWideCharPortable;  // reaches the portable form for its tests

    static std::wstring windows_impl(const utString& text);
    static std::size_t windows_length(const utString& text);

    // By the C library, in the code set of its locale; what it can't convert has length 0. For
    // systems that have no code pages; `convert` and `length` never call it.
    static std::wstring portable_impl(const utString& text);
    static std::size_t portable_length(const utString& text);
};
