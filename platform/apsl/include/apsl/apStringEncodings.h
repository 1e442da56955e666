// apStringEncodings.h: the encodings that come with the library.
#pragma once

#include <apsl/apIStringEncoding.h>

/// The code page that narrow text is in, asked for at each call (see ap_thread_code_page).
class UT_EXPORT apStringCRTEncoding : public apIStringEncoding {
  public:
    apString decode(const utString& text, int& status) const override;
    utString encode(const apString& text, int& status) const override;
};

/// UTF-8, whatever the thread's code page.
class UT_EXPORT apStringUTF8Encoding : public apIStringEncoding {
  public:
    apString decode(const utString& text, int& status) const override;
    utString encode(const apString& text, int& status) const override;
};

/// The single-byte Western code page 1252, whatever the thread's code page.
class UT_EXPORT apString1252Encoding : public apIStringEncoding {
  public:
    apString decode(const utString& text, int& status) const override;
    utString encode(const apString& text, int& status) const override;
};
