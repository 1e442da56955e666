// registry_path: keys as a person writes them.

#include "commands/registry/registry_path.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "commands/registry/registry_value.h"
#include "text/ascii.h"
#include "text/escaped_text.h"

namespace nmk_registry {

namespace {

struct Root {
    std::string_view name, long_name;
    HKEY key;
};

const std::array<Root, 4>& roots() {
    static const std::array<Root, 4> all = {{{"HKCR", "HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
                                             {"HKCU", "HKEY_CURRENT_USER", HKEY_CURRENT_USER},
                                             {"HKLM", "HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
                                             {"HKU", "HKEY_USERS", HKEY_USERS}}};
    return all;
}

HKEY root_named(std::string_view name) {
    for (const Root& root : roots()) {
        const std::string lower = nmk_text::lower_case(name);
        if (lower == nmk_text::lower_case(root.name) ||
            lower == nmk_text::lower_case(root.long_name)) {
            return root.key;
        }
    }
    return nullptr;
}

[[noreturn]] void refuse(std::string_view text, const std::string& expected) {
    throw nmk_text::Error{{}, 0, nmk_text::quoted(text) + ": expected " + expected};
}

// The byte that "%2F" is at `at`, which is moved to its last character.
char escaped_byte(std::string_view text, std::size_t& at) {
    const char* const digits = text.data() + at + 1;
    unsigned value = 0;
    if (at + 2 >= text.size() || std::from_chars(digits, digits + 2, value, 16).ptr != digits + 2 ||
        value == 0) {
        refuse(text, "two hexadecimal digits after \"%\" (a percent sign is written %25)");
    }
    at += 2;
    return static_cast<char>(value);
}

KeyPath key_path_of(std::string_view text) {
    const std::size_t slash = std::min(text.find('/'), text.size());
    KeyPath path{root_named(text.substr(0, slash)), {}};
    if (path.root == nullptr) {
        refuse(text, "a key that begins with HKCU, HKLM, HKCR or HKU, as in HKCU/Software");
    }
    for (std::size_t at = slash + 1; at < text.size(); ++at) {
        const char c = text[at] == '%' ? escaped_byte(text, at) : text[at];
        if (c == '\\') {
            refuse(text, "names of keys without a backslash");
        }
        const bool separates = text[at] == '/' && c == '/';
        path.below += separates ? '\\' : c;
    }
    if (path.below.starts_with('\\') || path.below.find("\\\\") != std::string::npos) {
        refuse(text, "names of keys that are not empty");
    }
    if (path.below.ends_with('\\')) path.below.pop_back();
    return path;
}

}  // namespace

nmk_text::Result<KeyPath> read_key_path(std::string_view text) {
    return nmk_text::value_or_error({}, [&] { return key_path_of(text); });
}

std::string escaped_name(std::string_view name) {
    constexpr char digits[] = "0123456789ABCDEF";
    const bool is_text = is_utf8(name);
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        const bool is_control = byte < 0x20 || byte == 0x7F;
        if (c == '/' || c == '%' || is_control || (byte >= 0x80 && !is_text)) {
            text += {'%', digits[byte >> 4], digits[byte & 15]};
        } else {
            text += c;
        }
    }
    return text;
}

std::string key_path_text(const KeyPath& path) {
    std::string text;
    for (const Root& root : roots()) {
        if (root.key == path.root) text = root.name;
    }
    if (path.below.empty()) return text;
    std::string names = escaped_name(path.below);
    for (char& c : names) {
        if (c == '\\') c = '/';
    }
    return text + "/" + names;
}

KeyPath below(const KeyPath& path, const std::string& name) {
    return {path.root, path.below.empty() ? name : path.below + "\\" + name};
}

}  // namespace nmk_registry
