// nmkEscapeString: a text, and the same text with percent signs as URLs have it.
//
// Works on bytes, whatever their meaning: every text, ill-formed or with NUL bytes inside, comes
// back from url_escape and the constructor that undoes it.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

/// Only picks an overload; its value is not read.
enum nmkEscapeStringUrl { nmk_escape_string_url = 0 };

class NMKTOOLBOX_EXPORT nmkEscapeString {
  public:
    /// Holds the text as it is.
    explicit nmkEscapeString(const utString& text);

    /// Holds the unescaped text: each "%" with two hexadecimal digits becomes the
    /// byte of that value. A "%" without them stays as it is.
    nmkEscapeString(nmkEscapeStringUrl, const utString& escaped);

    /// The text held.
    utString str() const;

    /// The text with every byte but A to Z, a to z, 0 to 9, "-", ".", "_" and "~" as "%" and two
    /// hexadecimal digits in lower case. Null for the null string.
    utString url_escape() const;

  private:
    static utString url_unescape(const utString& escaped);

    utString m_text;
};
