#include <apsl/apCaseComparer.h>
#include <apsl/apCharacter.h>

#include <algorithm>

int apCaseComparer::compare(const apString& left, const apString& right) const noexcept {
    if (!left.is_valid() || !right.is_valid()) {
        return (left.is_valid() ? 1 : 0) - (right.is_valid() ? 1 : 0);
    }
    const std::wstring_view a = left.view();
    const std::wstring_view b = right.view();
    const std::size_t length = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < length; ++i) {
        const wchar_t x = ap_to_lower(a[i]);
        const wchar_t y = ap_to_lower(b[i]);
        if (x != y) return x < y ? -1 : 1;
    }
    return (a.size() > length ? 1 : 0) - (b.size() > length ? 1 : 0);
}
