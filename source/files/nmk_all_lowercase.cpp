#include <nmktoolbox/files/nmk_all_lowercase.h>

#include "files/wide_text.h"

#include <nmktoolbox/files/nmkCharTypes.h>

#include <apsl/apCharacter.h>

#include <algorithm>
#include <string>

using nmk_files::wide_of;

int nmk_all_lowercase(const utString& text) {
    const std::wstring wide = wide_of(text);
    const bool all = std::all_of(wide.begin(), wide.end(), [](wchar_t unit) {
        return !ap_is_alpha(unit) || ap_is_lower(unit);
    });
    return all ? 1 : 0;
}

int nmk_all_uppercase(const utString& text) {
    const nmkCharTypes types(text);
    // Deliberate: counts to the length in bytes, other than the lower-case form.
    for (int i = 0; i < text.length(); ++i) {
        if (types.isalpha(i) != 0 && types.isupper(i) == 0) {
            return 0;
        }
    }
    return 1;
}
