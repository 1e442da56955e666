// apCharacter.h: the class and the case of one UTF-16 code unit.
//
// By the Unicode character database, whatever the locale of the process. A surrogate, being half a
// character, has neither class nor case. For ASCII every result is that of the C locale.
#pragma once

#include <utils/utExport.h>

/// Letters: Alphabetic.
UT_EXPORT bool ap_is_alpha(wchar_t character) noexcept;
/// Decimal digits of any script: Decimal_Number.
UT_EXPORT bool ap_is_digit(wchar_t character) noexcept;
/// Letters and decimal digits.
UT_EXPORT bool ap_is_alnum(wchar_t character) noexcept;
/// Hexadecimal digits: decimal digits of any script, a to f in plain and in full width.
UT_EXPORT bool ap_is_xdigit(wchar_t character) noexcept;
/// Lowercase and Uppercase; a character of title case is neither.
UT_EXPORT bool ap_is_lower(wchar_t character) noexcept;
UT_EXPORT bool ap_is_upper(wchar_t character) noexcept;
/// White_Space less the no-break spaces U+00A0, U+2007 and U+202F.
UT_EXPORT bool ap_is_space(wchar_t character) noexcept;
/// The tabulator and the spaces within a line, less the no-break spaces.
UT_EXPORT bool ap_is_blank(wchar_t character) noexcept;
/// Control characters: category Cc.
UT_EXPORT bool ap_is_cntrl(wchar_t character) noexcept;
/// Whatever leaves a mark: assigned, neither White_Space nor control nor surrogate.
UT_EXPORT bool ap_is_graph(wchar_t character) noexcept;
/// Whatever leaves a mark or is a space of category Zs, the no-break ones included.
UT_EXPORT bool ap_is_print(wchar_t character) noexcept;
/// Punctuation and symbols: categories P and S, less letters.
UT_EXPORT bool ap_is_punct(wchar_t character) noexcept;

/// The simple one-to-one mappings: the dotless i goes up to I, the sharp s stays, sigma goes down
/// to the same letter at the end of a word as elsewhere. What has no mapping stays as it is.
UT_EXPORT wchar_t ap_to_lower(wchar_t character) noexcept;
UT_EXPORT wchar_t ap_to_upper(wchar_t character) noexcept;
