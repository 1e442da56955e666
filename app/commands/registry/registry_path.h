// registry_path.h: keys as a person writes them: "HKCU/Software/A company".
//
// "/" separates the keys; "%2F" is a slash within a name, "%25" a percent sign, and every other
// byte may be written so as well.
#pragma once

#include <winapi/registry.h>

#include <string>
#include <string_view>

#include "text/result.h"

namespace nmk_registry {

struct KeyPath {
    HKEY root = nullptr;
    std::string below;  // the names with "\" between them; empty for the root itself
};

/// Reads "HKCU/Software/A%2FB"; the roots are HKCR, HKCU, HKLM and HKU, also by their long names.
nmk_text::Result<KeyPath> read_key_path(std::string_view text);

/// The path with the short name of the root.
std::string key_path_text(const KeyPath& path);

/// A name of a key with slashes, percent signs and control characters escaped, and so all that is
/// not ASCII where the name is not valid UTF-8.
std::string escaped_name(std::string_view name);

/// The path of a key below.
KeyPath below(const KeyPath& path, const std::string& name);

}  // namespace nmk_registry
