#include <nmktoolbox/files/nmkcompare.h>

#include "files/wide_text.h"

using nmk_files::wide_of;

int nmkcompare(const utString& left, const utString& right) {
    // A code unit is never negative, whatever the sign of wchar_t, so this compares unsigned.
    const int order = wide_of(left).compare(wide_of(right));
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}
