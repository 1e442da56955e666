// nmkCharTypes: the classes of the characters of a text.
//
// The text is converted once; places are counted in UTF-16 code units. The classes are Unicode's,
// whatever the locale: see ap_is_alnum and its family. A surrogate is in no class. All tests
// return 1 or 0, and 0 for a position outside the text.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <string>

class NMKTOOLBOX_EXPORT nmkCharTypes {
  public:
    explicit nmkCharTypes(const utString& text);

    int isalnum(int index) const;
    int isalpha(int index) const;
    int isblank(int index) const;
    int iscntrl(int index) const;
    int isdigit(int index) const;
    int isgraph(int index) const;
    int islower(int index) const;
    int isprint(int index) const;
    int ispunct(int index) const;
    int isspace(int index) const;
    int isupper(int index) const;
    int isxdigit(int index) const;

  private:
    int test(bool (*is_in_class)(wchar_t), int index) const;

    std::wstring m_text;
};
