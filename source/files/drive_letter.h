// drive_letter.h: whether a name starts with a drive letter and a colon.
#pragma once

#include <apsl/apIStringEncoding.h>
#include <utils/utString.h>

namespace nmk_files {

/// True when the second character of `path`, decoded, is ":". A character may take several bytes,
/// and a pair of surrogates is one; what cannot be decoded counts as the decoder replaces it.
bool second_is_colon(const utString& path, const apIStringEncoding& encoding);

}  // namespace nmk_files
