#include <nmktoolbox/files/nmkCharTypes.h>

#include "files/wide_text.h"

#include <apsl/apCharacter.h>

using nmk_files::wide_of;

nmkCharTypes::nmkCharTypes(const utString& text) : m_text(wide_of(text)) {}

int nmkCharTypes::isalnum(int index) const { return test(ap_is_alnum, index); }
int nmkCharTypes::isalpha(int index) const { return test(ap_is_alpha, index); }
int nmkCharTypes::isblank(int index) const { return test(ap_is_blank, index); }
int nmkCharTypes::iscntrl(int index) const { return test(ap_is_cntrl, index); }
int nmkCharTypes::isdigit(int index) const { return test(ap_is_digit, index); }
int nmkCharTypes::isgraph(int index) const { return test(ap_is_graph, index); }
int nmkCharTypes::islower(int index) const { return test(ap_is_lower, index); }
int nmkCharTypes::isprint(int index) const { return test(ap_is_print, index); }
int nmkCharTypes::ispunct(int index) const { return test(ap_is_punct, index); }
int nmkCharTypes::isspace(int index) const { return test(ap_is_space, index); }
int nmkCharTypes::isupper(int index) const { return test(ap_is_upper, index); }
int nmkCharTypes::isxdigit(int index) const { return test(ap_is_xdigit, index); }

int nmkCharTypes::test(bool (*is_in_class)(wchar_t), int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= m_text.size()) {
        return 0;
    }
    return is_in_class(m_text[static_cast<std::size_t>(index)]) ? 1 : 0;
}
