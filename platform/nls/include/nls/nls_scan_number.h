// nls_scan_number.h: numbers in a text, read as the C library's sscanf reads them in the locale
// "C".
//
// White space before a number is skipped, a leading plus sign is accepted, nothing needs to
// separate two numbers, and what follows a number is left for the next call. Unlike there, the
// words "nan" and "inf", hexadecimal numbers, and numbers past the range of the type are not read.
#pragma once

#pragma GCC visibility push(default)

/// Reads a number from `at` on, a part of a text that ends at `end`. Returns true, with `at` behind
/// the number; or false, with `at` and `value` as they were.
bool nls_scan_number(const char*& at, const char* end, double& value);
bool nls_scan_number(const char*& at, const char* end, int& value);

#pragma GCC visibility pop
