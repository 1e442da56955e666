// neutral_locale.h: the "C" locale as an object, for functions that take one.
#pragma once

#include <locale.h>

namespace nmk_files {

/// Made at the first call, and never freed: it may be needed until the process ends.
inline locale_t neutral_locale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", locale_t{});
    return locale;
}

}  // namespace nmk_files
