// name_samples.h: texts that names are made of in the tests.
#pragma once

#include <utils/utString.h>

#include <ostream>
#include <string>

/// A text as a failure should show it: null and the empty text apart.
inline std::string shown(const utString& text) {
    return text.is_null() ? "(null)" : "\"" + std::string(text.view()) + "\"";
}

/// Bytes that are valid in no part of UTF-8, and a sequence that is cut off.
inline const std::string bad_byte = "\xFF";
inline const std::string cut_off = "\xE6\x97";
