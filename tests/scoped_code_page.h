// scoped_code_page.h: another code page for narrow text, for the length of a test.
#pragma once

#include <apsl/apCodePage.h>

/// Sets the thread's code page, and sets it back.
class ScopedCodePage {
  public:
    explicit ScopedCodePage(unsigned code_page) : m_before(ap_thread_code_page()) {
        ap_set_thread_code_page(code_page);
    }
    ~ScopedCodePage() { ap_set_thread_code_page(m_before); }
    ScopedCodePage(const ScopedCodePage&) = delete;
    ScopedCodePage& operator=(const ScopedCodePage&) = delete;

  private:
    unsigned m_before;
};
