// registry_scratch.h: a registry of its own for the length of a test.
#pragma once

#include <winapi/configuration_directory.h>
#include <winapi/registry.h>
#include <winapi/registry_store.h>

#include <string>

#include "scratch_directory.h"

class RegistryScratch : public ScratchDirectory {
  public:
    RegistryScratch() { winapi::set_configuration_directory(path().c_str()); }
    ~RegistryScratch() { winapi::set_configuration_directory(nullptr); }

    std::string in(const std::string& name) const { return path() + "/" + name; }
    std::string store_directory() const { return in("registry"); }
    std::string store_file() const { return in("registry/store.sqlite"); }
};

/// Creates the key and its parents; null if it cannot.
inline HKEY created_key(HKEY root, const std::string& path) {
    HKEY key = nullptr;
    RegCreateKeyExA(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return key;
}

/// Opens the key to read and write; null if it cannot.
inline HKEY opened_key(HKEY root, const std::string& path) {
    HKEY key = nullptr;
    RegOpenKeyExA(root, path.c_str(), 0, KEY_READ | KEY_WRITE, &key);
    return key;
}

inline bool has_key(HKEY root, const std::string& path) {
    const HKEY key = opened_key(root, path);
    return key != nullptr && RegCloseKey(key) == 0;
}

/// Sets a text as it is, without a NUL.
inline LSTATUS set_text(HKEY key, const char* name, const std::string& text, DWORD type = REG_SZ) {
    return RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(text.data()),
                          static_cast<DWORD>(text.size()));
}

/// The bytes of a value; "(result N)" if they cannot be read.
inline std::string text_of(HKEY key, const char* name) {
    DWORD size = 0;
    LSTATUS status = RegQueryValueExA(key, name, nullptr, nullptr, nullptr, &size);
    std::string text(size, '\0');
    if (status == 0) {
        status = RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()),
                                  &size);
    }
    return status == 0 ? text : "(result " + std::to_string(status) + ")";
}

inline std::string text_of(HKEY root, const std::string& path, const char* name) {
    const HKEY key = opened_key(root, path);
    std::string text = text_of(key, name);
    RegCloseKey(key);
    return text;
}

/// Creates the key, and a value with a text in it.
inline void put_text(HKEY root, const std::string& path, const char* name,
                     const std::string& text) {
    const HKEY key = created_key(root, path);
    EXPECT_EQ(set_text(key, name, text), 0) << path;
    EXPECT_EQ(RegCloseKey(key), 0);
}
