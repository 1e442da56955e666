// second_character.h: whether a name has a drive letter's colon, told in characters, not bytes.
#pragma once

#include <apsl/apIStringEncoding.h>
#include <utils/utString.h>

/// True when the second character of `path`, decoded, is ":". A character may take several bytes,
/// and a pair of surrogates is one; what cannot be decoded counts as the decoder replaces it.
bool second_is_colon(const utString& path, const apIStringEncoding& encoding);
