#include <nls/nlsNeutralNumbers.h>

// The locales of a thread: how many guards it has, and what was in place before the first one.
struct nlsNeutralNumbers::ThreadLocale {
    ThreadLocale() = default;
    ThreadLocale(const ThreadLocale&) = delete;
    ThreadLocale& operator=(const ThreadLocale&) = delete;
    ~ThreadLocale() { end(); }

    void begin() {
        before = ::uselocale(nullptr);
        const ::locale_t base = ::duplocale(before);
        neutral = ::newlocale(LC_NUMERIC_MASK, "C", base);
        if (neutral == nullptr && base != nullptr) ::freelocale(base);
        if (neutral != nullptr) ::uselocale(neutral);
    }

    void end() noexcept {
        if (neutral == nullptr) return;
        // A locale that was put in place meanwhile is not ours to replace.
        if (::uselocale(nullptr) == neutral) ::uselocale(before);
        ::freelocale(neutral);
        neutral = nullptr;
    }

    int guards = 0;
    ::locale_t before = nullptr;
    ::locale_t neutral = nullptr;
};

nlsNeutralNumbers::ThreadLocale& nlsNeutralNumbers::of_this_thread() {
    thread_local ThreadLocale locale;
    return locale;
}

nlsNeutralNumbers::nlsNeutralNumbers(nlsTranslationType type)
    : m_type(type), m_locale(&of_this_thread()) {
    ThreadLocale& locale = of_this_thread();
    if (locale.guards++ == 0) locale.begin();
}

nlsNeutralNumbers::~nlsNeutralNumbers() {
    ThreadLocale& locale = of_this_thread();
    if (&locale != m_locale) return;
    if (--locale.guards == 0) locale.end();
}
