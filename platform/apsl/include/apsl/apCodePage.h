// apCodePage.h: between bytes in a code page and wide text.
//
// Wide text holds one UTF-16 code unit in each wchar_t, also where wchar_t has 32 bits; lengths
// and positions in it count code units. Nothing here fails: what has no counterpart is substituted
// and the status says so. All operations may be called from any thread at any time.
#pragma once

#include <utils/utExport.h>

#include <string>
#include <string_view>

constexpr unsigned ap_code_page_utf8 = 65001;
constexpr unsigned ap_code_page_western = 1252;

/// True for the code pages that are known here: UTF-8 and the single-byte Western one.
UT_EXPORT bool ap_is_known_code_page(unsigned code_page) noexcept;

/// The code page of narrow text: UTF-8 unless the host chose another. One for the whole process.
UT_EXPORT unsigned ap_thread_code_page() noexcept;

/// Chooses that code page; one that is not known leaves the choice as it was.
UT_EXPORT void ap_set_thread_code_page(unsigned code_page) noexcept;

/// Wide text of `bytes`; a code page that is not known is taken for UTF-8.
///
///   status  1 when every byte had a meaning, 0 when something was substituted
///
/// Ill-formed UTF-8 gives one U+FFFD for each maximal part that begins a character but does not
/// complete it, or else for each byte (The Unicode Standard 15.0, section 3.9, "U+FFFD Substitution
/// of Maximal Subparts"). In the Western code page every byte has a meaning: the five that it does
/// not assign are control characters.
UT_EXPORT std::wstring ap_decode(unsigned code_page, std::string_view bytes, int& status);

/// Bytes of wide text; a code page that is not known is taken for UTF-8.
///
///   status  1 when the bytes decode to the same text, 0 when something was substituted
///
/// A surrogate without its other half becomes U+FFFD in UTF-8. A character that the Western code
/// page lacks becomes one '?'. A 32-bit wchar_t above U+FFFF, as a wide literal of the compiler has
/// it, is taken for the character that it names.
UT_EXPORT std::string ap_encode(unsigned code_page, std::wstring_view text, int& status);
