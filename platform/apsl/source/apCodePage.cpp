#include <apsl/apCodePage.h>

#include <atomic>

#include "utf8.h"
#include "western_code_page.h"

namespace {

std::atomic<unsigned>& chosen_code_page() {
    static std::atomic<unsigned> code_page{ap_code_page_utf8};
    return code_page;
}

}  // namespace

bool ap_is_known_code_page(unsigned code_page) noexcept {
    return code_page == ap_code_page_utf8 || code_page == ap_code_page_western;
}

unsigned ap_thread_code_page() noexcept { return chosen_code_page().load(); }

void ap_set_thread_code_page(unsigned code_page) noexcept {
    if (ap_is_known_code_page(code_page)) chosen_code_page().store(code_page);
}

std::wstring ap_decode(unsigned code_page, std::string_view bytes, int& status) {
    bool exact = true;
    std::wstring wide = code_page == ap_code_page_western ? nmk_apsl::western_to_wide(bytes)
                                                          : nmk_apsl::utf8_to_wide(bytes, exact);
    status = exact ? 1 : 0;
    return wide;
}

std::string ap_encode(unsigned code_page, std::wstring_view text, int& status) {
    bool exact = true;
    std::string bytes = code_page == ap_code_page_western ? nmk_apsl::wide_to_western(text, exact)
                                                          : nmk_apsl::wide_to_utf8(text, exact);
    status = exact ? 1 : 0;
    return bytes;
}
