// nmkFileDir.cpp: making names, their normal form, and what is computed on the text alone.
#include <apsl/apString.h>
#include <apsl/apStringEncodings.h>
#include <apsl/apStringPos.h>
#include <nmktoolbox/files/nmkBaseNameExt.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <nmktoolbox/files/nmkFilenameExt.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "drive_letter.h"

namespace {

// The steps of the normal form on wide text.
apString in_normal_form(apString text, int native) {
    const apString slash(L"/");
    const apString backslash(L"\\");
    if (native != 0) {
        text.replace_all(slash, backslash);
    } else {
        text.replace_all(backslash, slash);
    }
    // Deliberate: a root loses its slash like any other name. C:/ becomes C:, and "/" the empty
    // text, to which add_one gives its slash back. With `native` no slash is left to take away.
    if (text.ends_with(slash)) text = text.left(text.end() - 1);
    return text;
}

// The same steps on the bytes of a text that cannot be decoded. Both separators are one byte in
// every encoding that a name on the disk has.
utString in_normal_form(std::string bytes, int native) {
    if (native != 0) {
        std::replace(bytes.begin(), bytes.end(), '/', '\\');
    } else {
        std::replace(bytes.begin(), bytes.end(), '\\', '/');
    }
    if (bytes.ends_with('/')) bytes.pop_back();
    return utString(std::move(bytes));
}

}  // namespace

const apIStringEncoding* nmkFileDir::choose_ut_encoding(const apIStringEncoding* encoding) {
    // Never released: names in other statics may be used until the process ends.
    static const apIStringEncoding* const of_the_runtime = new apStringCRTEncoding;
    return encoding != nullptr ? encoding : of_the_runtime;
}

nmkFileDir::nmkFileDir() : m_encoding(choose_ut_encoding(nullptr)) {}

nmkFileDir::nmkFileDir(nmkFileDirEncoding, const apIStringEncoding* encoding)
    : m_encoding(choose_ut_encoding(encoding)) {}

nmkFileDir::nmkFileDir(const utString& path, const apIStringEncoding* encoding)
    : m_encoding(choose_ut_encoding(encoding)) {
    normalise(path.c_str());
}

nmkFileDir::nmkFileDir(const char* path, const apIStringEncoding* encoding)
    : m_encoding(choose_ut_encoding(encoding)) {
    normalise(path);
}

void nmkFileDir::set(const utString& path, const apIStringEncoding* encoding) {
    set(path.c_str(), encoding);
}

void nmkFileDir::set(const char* path, const apIStringEncoding* encoding) {
    if (encoding != nullptr) set_ut_encoding(encoding);
    normalise(path);
}

utString nmkFileDir::normalise(const char* path, int native) const {
    if (path == nullptr || *path == '\0') return utString();
    const utString given(path);
    int exact = 0;
    const apString wide = m_encoding->decode(given, exact);
    if (exact != 0) {
        utString narrow = m_encoding->encode(in_normal_form(wide, native), exact);
        if (exact != 0) return narrow;
    }
    return in_normal_form(std::string(given.view()), native);
}

const utString& nmkFileDir::get_native() const {
    static utString native;
    native = normalise(m_path.c_str(), 1);
    return native;
}

apPathName nmkFileDir::get_ap_path_name() const {
    if (m_path.is_null()) return apPathName();
    int exact = 0;
    const apString wide = m_encoding->decode(m_path, exact);
    return exact != 0 ? apPathName(wide) : apPathName();
}

void nmkFileDir::add_one(const char* name) {
    utString component("/");  // in whole first, as `name` may be a part of this path
    component += name;
    // Deliberate: no name at all becomes a rooted one.
    m_path += component;
}

void nmkFileDir::add_pathname(const utString& base) {
    if (m_path.is_null() || base.is_null()) return;
    const std::string_view path = m_path.view();
    // Deliberate: a leading "." counts as rooted, so ./x and .hidden are not joined.
    if (path.starts_with('.') || path.starts_with('/') ||
        nmk_files::second_is_colon(m_path, *m_encoding)) {
        return;
    }
    std::string joined(base.view());
    joined += '/';
    joined += path;
    normalise(joined.c_str());
}

void nmkFileDir::change_extension(utString extension) {
    utString ending("");
    if (extension.length() > 0) {
        if (nmkCheckFilenameExt(m_path.c_str(), extension.c_str()) != 0) return;
        ending += '.';
        ending += extension;
    }
    utString name = basename();
    name += ending;
    // Deliberate: a name without a directory becomes a rooted one, as its parent is null.
    up_one();
    add_one(name.c_str());
}

utString nmkFileDir::basename() const {
    return m_path.is_null() ? utString() : nmkBaseName(m_path, nullptr);
}

utString nmkFileDir::basename_ext() const {
    return m_path.is_null() ? utString() : nmkBaseNameExt(m_path, nullptr);
}

utString nmkFileDir::file_ext() const {
    return is_file() != 0 ? file_ext_without_check() : utString();
}

utString nmkFileDir::file_ext_without_check() const {
    const utString name = basename_ext();
    if (name.length() == 0) return utString();
    const std::size_t dot = name.view().rfind('.');
    return dot == std::string_view::npos ? utString("") : utString(name.view().substr(dot + 1));
}
