#include <nmktoolbox/runtime/nmkRegistry.h>
#include <winapi/last_error.h>
#include <winapi/mutexes.h>
#include <winapi/processes.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr const char* mutex_name = "com.norvex.registry";
constexpr REGSAM reading = KEY_QUERY_VALUE;
constexpr REGSAM reading_and_writing = KEY_QUERY_VALUE | KEY_SET_VALUE;

constexpr int failure = 1;

// Values of so many bytes are read with one call; the size of a longer one is asked for first.
constexpr DWORD max_short_value = 256;

int result_of(LSTATUS status) { return status == 0 ? 0 : failure; }

}  // namespace

nmkRegistry::nmkRegistry() : m_mutex(CreateMutexA(nullptr, FALSE, mutex_name)) {
    // Deliberate: a mutex that was abandoned is not kept either. Its last holder ended within a
    // session, so this object is invalid; the next one finds the mutex released.
    if (WaitForSingleObject(m_mutex, INFINITE) != WAIT_OBJECT_0) {
        ReleaseMutex(m_mutex);
        CloseHandle(m_mutex);
        m_mutex = nullptr;
    }
}

nmkRegistry::~nmkRegistry() {
    if (m_mutex != nullptr) close_key();
    ReleaseMutex(m_mutex);
    CloseHandle(m_mutex);
}

int nmkRegistry::valid() const { return m_mutex != nullptr; }

int nmkRegistry::open_key(HKEY root, const utString& path, int writable, int extra_access) {
    if (!valid()) return failure;
    // Deliberate: the mode is kept even if the key cannot be opened, and serves open_subkey.
    m_writable = writable;
    HKEY key = nullptr;
    const REGSAM rights = m_writable != 0 ? reading_and_writing : reading;
    const LSTATUS status =
        RegOpenKeyExA(root, path.c_str(), 0, rights | static_cast<REGSAM>(extra_access), &key);
    if (status != 0) return failure;
    close_key();
    m_key = key;
    return 0;
}

int nmkRegistry::open_subkey(const utString& path) { return open_key(m_key, path, m_writable, 0); }

// Deliberate: after a failure no key is open, where open_key keeps the present one.
int nmkRegistry::create_key(HKEY root, const utString& path) {
    if (!valid()) return failure;
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExA(root, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                           KEY_ALL_ACCESS, nullptr, &key, nullptr);
    close_key();
    m_key = key;
    return result_of(status);
}

int nmkRegistry::create_subkey(const utString& path) { return create_key(m_key, path); }

int nmkRegistry::copy_tree(HKEY root, const utString& from, const utString& to) {
    if (create_key(root, to) != 0) return failure;
    return result_of(RegCopyTreeA(root, from.c_str(), m_key));
}

int nmkRegistry::delete_key(HKEY root, const utString& path) {
    return valid() ? result_of(RegDeleteKeyA(root, path.c_str())) : failure;
}

int nmkRegistry::delete_subkey(const utString& path) { return delete_key(m_key, path); }

int nmkRegistry::recursively_delete_key(HKEY root, const utString& path) {
    return valid() ? static_cast<int>(SHDeleteKeyA(root, path.c_str())) : failure;
}

int nmkRegistry::recursively_delete_subkey(const utString& path) {
    return recursively_delete_key(m_key, path);
}

int nmkRegistry::query_value(const utString& name, int& value) {
    unsigned char* data = nullptr;
    const int status = query_value(name, data);
    const std::unique_ptr<unsigned char[]> owner(data);
    if (status != 0) return status;
    value = 0;
    if (data != nullptr) std::memcpy(&value, data, sizeof value);
    return 0;
}

int nmkRegistry::query_value(const utString& name, utString& value) {
    if (!valid()) return failure;
    value = "";
    unsigned char* data = nullptr;
    const int status = query_value(name, data);
    const std::unique_ptr<unsigned char[]> owner(data);
    if (status == 0 && data != nullptr) value = reinterpret_cast<const char*>(data);
    return status;
}

int nmkRegistry::query_value(const utString& name, unsigned char*& data) {
    data = nullptr;
    if (!valid()) return failure;
    unsigned char short_value[max_short_value];
    DWORD size = max_short_value;
    const LSTATUS status =
        RegQueryValueExA(m_key, name.c_str(), nullptr, nullptr, short_value, &size);
    const bool is_short = status == 0;
    if ((!is_short && status != ERROR_MORE_DATA) || size == 0) return result_of(status);
    const std::size_t room = std::max(std::size_t{size}, sizeof(int) - 1) + 1;
    data = new unsigned char[room]();
    if (!is_short) {
        return result_of(RegQueryValueExA(m_key, name.c_str(), nullptr, nullptr, data, &size));
    }
    std::copy_n(short_value, size, data);
    return 0;
}

int nmkRegistry::set_value(const utString& name, int value) {
    unsigned char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    return set_value(name, bytes, REG_DWORD, sizeof value);
}

int nmkRegistry::set_value(const utString& name, const utString& value) {
    const std::size_t size = value.view().size() + 1;
    const auto buffer = std::make_unique<unsigned char[]>(size);
    std::ranges::copy(value.view(), buffer.get());
    return set_value(name, buffer.get(), REG_SZ, size);
}

int nmkRegistry::set_value(const utString& name, unsigned char* const data, unsigned long type,
                           unsigned long size) {
    if (!valid()) return failure;
    return result_of(RegSetValueExA(m_key, name.c_str(), 0, static_cast<DWORD>(type), data,
                                    static_cast<DWORD>(size)));
}

int nmkRegistry::close_key() {
    if (!valid()) return failure;
    if (m_key == nullptr) return 0;
    const LSTATUS status = RegCloseKey(m_key);
    m_key = nullptr;
    return result_of(status);
}
