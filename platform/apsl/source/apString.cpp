#include <apsl/apString.h>

#include <algorithm>

int apString::replace_all(const apString& from, const apString& to) {
    const std::wstring_view text = view();
    const std::wstring_view pattern = from.view();
    std::size_t found = pattern.empty() ? text.npos : text.find(pattern);
    if (found == text.npos) return 0;

    std::wstring replaced;
    std::size_t done = 0;
    int count = 0;
    for (; found != text.npos; found = text.find(pattern, done)) {
        replaced.append(text, done, found - done).append(to.view());
        done = found + pattern.size();
        ++count;
    }
    replaced.append(text, done);
    m_text = std::move(replaced);
    return count;
}

apString apString::left(const apStringPos& position) const {
    if (!is_valid()) return {};
    const int count = std::clamp(position.index(), 0, length());
    return apString(view().substr(0, static_cast<std::size_t>(count)));
}
