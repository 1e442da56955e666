// names_fuzzer: any bytes as names of files: no byte is lost, none is read or written past an end.
//
// The first byte chooses the encoding; then come a name, a base and an extension, ended by NULs.
// Nothing on the disk is changed.

#include <apsl/apStringEncodings.h>
#include <nmktoolbox/files/nmkFileDir.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

std::string take_text(std::string_view& input) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    std::string text(input.substr(0, end));
    input.remove_prefix(std::min(end + 1, input.size()));
    return text;
}

// What the name must be: every encoding here leaves the bytes other than separators alone.
std::string plain_normal_form(std::string text) {
    std::replace(text.begin(), text.end(), '\\', '/');
    if (text.ends_with('/')) text.pop_back();
    return text;
}

void check_normal_form(const nmkFileDir& name, const std::string& given) {
    require(name.get().is_null() == given.empty());
    require(name.get().view() == plain_normal_form(given));
    require(name.get_native().view().find('/') == std::string_view::npos);
}

void check_parents(nmkFileDir name) {
    while (true) {
        const std::string before(name.get().view());
        const bool has_parent = name.up_one() != 0;
        require(has_parent == !name.get().is_null());
        if (!has_parent) return;
        const std::string_view parent = name.get().view();
        require(!parent.empty() && parent.size() < before.size());
        require(before.starts_with(parent) && before[parent.size()] == '/');
        require(before.find('/', parent.size() + 1) == std::string::npos);
    }
}

void check_joined(nmkFileDir name, const std::string& base) {
    const std::string before(name.get().view());
    name.add_pathname(utString(base));
    const bool is_joined = name.get().view() == plain_normal_form(base + "/" + before);
    require(name.get().view() == before || is_joined);
}

void check_extension(nmkFileDir name, const std::string& extension) {
    name.change_extension(utString(extension));
    const std::string_view path = name.get().view();
    require(path.size() >= extension.size());
    name.change_extension(utString());
}

void ask_the_disk(nmkFileDir name) {
    (void)name.get_ap_path_name();
    (void)name.basename();
    (void)name.file_ext_without_check();
    (void)name.is_dir();
    (void)name.size();
    (void)name.is_local_file();
    const bool is_valid = name.is_valid() != 0;
    nmkFileDir full(name);
    full.set_full_path();
    require(is_valid || full.get() == name.get());
    name.make_long_pathname();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const apStringCRTEncoding of_the_runtime;
    static const apString1252Encoding western;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.empty()) return 0;
    const bool is_western = (input.front() & 1) != 0;
    input.remove_prefix(1);
    const std::string text = take_text(input);
    const std::string base = take_text(input);
    const std::string extension = take_text(input);

    nmkFileDir name(text.c_str(), nullptr);
    name.set(text.c_str(),
             is_western ? static_cast<const apIStringEncoding*>(&western) : &of_the_runtime);
    check_normal_form(name, text);
    check_parents(name);
    check_joined(name, base);
    check_extension(name, extension);
    ask_the_disk(name);
    return 0;
}
