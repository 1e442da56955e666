// neutral_numbers.h: printf writes numbers as in the "C" locale while one of these lives.
#pragma once

#include <langinfo.h>
#include <locale.h>

#include <string_view>

namespace nmk_files {

/// Changes nothing but the numbers, and nothing outside the calling thread. Costs nothing where the
/// numbers of the current locale are neutral already.
class NeutralNumbers {
  public:
    NeutralNumbers() {
        if (std::string_view(nl_langinfo(RADIXCHAR)) == "." &&
            std::string_view(nl_langinfo(THOUSEP)).empty()) {
            return;
        }
        const locale_t copy = duplocale(uselocale(locale_t{}));
        m_own = copy == locale_t{} ? copy : newlocale(LC_NUMERIC_MASK, "C", copy);
        if (m_own != locale_t{}) {
            m_before = uselocale(m_own);
        }
    }
    ~NeutralNumbers() {
        if (m_own != locale_t{}) {
            uselocale(m_before);
            freelocale(m_own);
        }
    }
    NeutralNumbers(const NeutralNumbers&) = delete;
    NeutralNumbers& operator=(const NeutralNumbers&) = delete;

  private:
    locale_t m_own{};
    locale_t m_before{};
};

}  // namespace nmk_files
