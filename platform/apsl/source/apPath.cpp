#include <apsl/apCodePage.h>
#include <apsl/apPath.h>

#include <filesystem>
#include <system_error>

bool apPath::is_valid() const noexcept {
    const std::wstring_view text = m_name.text().view();
    return !text.empty() && text.find(L'\0') == text.npos;
}

bool apPath::exists() const {
    if (!is_valid()) return false;
    std::error_code error;
    return std::filesystem::exists(std::filesystem::path(narrow().view()), error) && !error;
}

utString apPath::narrow() const {
    if (!is_valid()) return {};
    int status = 0;
    return utString(ap_encode(ap_thread_code_page(), m_name.text().view(), status));
}
