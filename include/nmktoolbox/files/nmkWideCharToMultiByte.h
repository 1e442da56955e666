// nmkWideCharToMultiByte: wide text made narrow, in the thread's code page.
//
// A surrogate without its other half becomes U+FFFD, and a character that the code page lacks "?".
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

class NMKTOOLBOX_EXPORT nmkWideCharToMultiByte {
  public:
    nmkWideCharToMultiByte() = delete;

    /// The narrow form of a text ended by a nul; the null string for a null pointer.
    static utString convert(const wchar_t* text);

  private:
    friend struct nmkWideCharToMultiBytePortable;  // reaches the portable form for its tests

    static utString windows_impl(const wchar_t* text);

    // By the C library, in the code set of its locale; the null string where that fails. For
    // systems that have no code pages; `convert` never calls it.
    static utString portable_impl(const wchar_t* text);
};
