// nlsNeutralNumbers: while one exists on a thread, the C library reads and writes numbers there as
// in the locale "C", with a decimal point.
//
// Guards of a thread may overlap in any order: the numbers are neutral until the last one ends, and
// the locale from before the first one is then in place again. A guard is made and destroyed on one
// thread; one that is destroyed on another thread leaves its own thread's numbers neutral.
#pragma once

#include <locale.h>

#include <memory>

#pragma GCC visibility push(default)

/// How texts are translated; the guard treats all values alike.
enum nlsTranslationType : int { nlsTranslationNone = 0 };

class nlsNeutralNumbers {
  public:
    explicit nlsNeutralNumbers(nlsTranslationType type);
    nlsNeutralNumbers(const nlsNeutralNumbers&) = delete;
    nlsNeutralNumbers& operator=(const nlsNeutralNumbers&) = delete;
    ~nlsNeutralNumbers();

    nlsTranslationType type() const noexcept { return m_type; }

  private:
    struct ThreadLocale;
    static ThreadLocale& of_this_thread();

    nlsTranslationType m_type;
    const ThreadLocale* m_locale;
};

#pragma GCC visibility pop
