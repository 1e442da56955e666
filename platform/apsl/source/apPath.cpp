#include <apsl/apCodePage.h>
#include <apsl/apPath.h>

#include <filesystem>
#include <system_error>

bool apPath::is_valid() const noexcept {
    const std::wstring_view text = m_name.text().view();
    return !text.empty() && text.find(L'\0') == text.npos;
}

bool apPath::exists() const {
    const utString name = narrow();
    if (name.is_null()) return false;
    std::error_code error;
    return std::filesystem::exists(std::filesystem::path(name.view()), error) && !error;
}

utString apPath::narrow() const {
    if (!is_valid()) return {};
    int exact = 0;
    utString name(ap_encode(ap_thread_code_page(), m_name.text().view(), exact));
    return exact != 0 ? name : utString();
}
