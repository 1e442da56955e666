#include <nmktoolbox/files/nmk_all_lowercase.h>

#include <nmktoolbox/files/nmkCharTypes.h>
#include <nmktoolbox/files/nmkstring_length.h>

int nmk_all_lowercase(const utString& text) {
    const nmkCharTypes types(text);
    const int length = nmkstring_length(text);
    for (int i = 0; i < length; ++i) {
        if (types.isalpha(i) != 0 && types.islower(i) == 0) {
            return 0;
        }
    }
    return 1;
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
