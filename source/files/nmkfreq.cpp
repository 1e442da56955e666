#include <nmktoolbox/files/nmkfreq.h>

#include <nmktoolbox/files/nmkreplace_all_strings.h>

#include <algorithm>

int nmkfreq(const utString& text, char c) {
    const auto bytes = text.view();
    return static_cast<int>(std::count(bytes.begin(), bytes.end(), c));
}

int nmkfreq(const utString& text, const utString& sub) {
    if (text.is_null() || sub.is_null()) {
        return 0;
    }
    utString copy = text;
    return nmkreplace_all_strings(copy, sub, "");
}
