#include <utils/utString.h>

#include <algorithm>
#include <memory>
#include <ostream>

utString::utString(utStringClaim, char* buffer) {
    const std::unique_ptr<char[]> claimed(buffer);
    if (claimed) m_text.emplace(claimed.get());
}

utString& utString::operator=(const char* text) {
    // Copied first: the text may be a part of this string.
    return *this = utString(text);
}

utString& utString::append(std::string_view text) {
    if (!m_text) m_text.emplace();
    m_text->append(text);
    return *this;
}

utString& utString::operator+=(const utString& text) {
    return text.is_null() ? *this : append(text.view());
}

utString& utString::operator+=(const char* text) { return text == nullptr ? *this : append(text); }

utString& utString::operator+=(char character) { return append({&character, 1}); }

utString& utString::operator<<(std::string_view text) { return append(text); }

int utString::locate_substring(const utString& sub, int start) const noexcept {
    if (is_null() || sub.is_null()) return -1;
    const auto found = view().find(sub.view(), static_cast<std::size_t>(std::max(start, 0)));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

int utString::extract_string(char delimiter, utString& taken) {
    const std::string_view text = view();
    const auto from = text.find_first_not_of(delimiter);
    if (from == std::string_view::npos) {
        if (!is_null()) m_text->clear();
        taken.set_invalid();
        return 0;
    }
    const auto to = std::min(text.find(delimiter, from), text.size());
    utString front(text.substr(from, to - from));
    m_text->erase(0, to + 1);
    taken = std::move(front);
    return 1;
}

utString utString::substring(int start, int count) const {
    if (is_null()) return {};
    const int from = std::clamp(start, 0, length());
    const int size = std::clamp(count, 0, length() - from);
    return utString(view().substr(static_cast<std::size_t>(from), static_cast<std::size_t>(size)));
}

utString operator+(utString left, const utString& right) { return left += right; }

utString operator+(utString left, const char* right) { return left += right; }

utString operator+(const char* left, const utString& right) { return utString(left) += right; }

utString operator+(utString left, char right) { return left += right; }

std::ostream& operator<<(std::ostream& stream, const utString& text) {
    return stream << text.view();
}
