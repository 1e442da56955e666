#include "registry_key.h"

#include <algorithm>
#include <array>
#include <memory>

#include "registry_failure.h"

namespace winapi {

namespace {

class KeyObject : public HandleObject {
  public:
    explicit KeyObject(const OpenKey& key) : m_key(key) {}
    bool closes_by_close_handle() const override { return false; }
    const OpenKey& key() const { return m_key; }

  private:
    const OpenKey m_key;
};

// The roots in the order of their handles, which are numbers one after the other.
constexpr std::array<KeyNumber, 4> roots = {classes_root, current_user, local_machine, users};

struct GenericRight {
    REGSAM asked;
    REGSAM rights;
};

constexpr REGSAM generic_read = 0x80000000u;
constexpr REGSAM generic_write = 0x40000000u;
constexpr REGSAM generic_execute = 0x20000000u;
constexpr REGSAM generic_all = 0x10000000u;
constexpr REGSAM maximum_allowed = 0x02000000u;

constexpr std::array<GenericRight, 5> generic_rights = {{{generic_read, KEY_READ},
                                                         {generic_write, KEY_WRITE},
                                                         {generic_execute, KEY_READ},
                                                         {generic_all, KEY_ALL_ACCESS},
                                                         {maximum_allowed, KEY_ALL_ACCESS}}};

REGSAM rights_of(REGSAM asked) {
    REGSAM rights = asked;
    for (const GenericRight& generic : generic_rights) {
        if ((asked & generic.asked) != 0) rights |= generic.rights;
    }
    return rights;
}

}  // namespace

std::optional<OpenKey> open_key_of(HKEY handle) {
    const auto distance = reinterpret_cast<std::uintptr_t>(handle) -
                          reinterpret_cast<std::uintptr_t>(HKEY_CLASSES_ROOT);
    if (distance < roots.size()) return OpenKey{roots[distance], KEY_ALL_ACCESS, true};
    const auto object = object_of_kind<KeyObject>(handle);
    return object == nullptr ? std::nullopt : std::optional(object->key());
}

HKEY handle_to(KeyNumber key, REGSAM rights) {
    const OpenKey open_key = {key, rights_of(rights), false};
    return static_cast<HKEY>(open_handle(std::make_shared<KeyObject>(open_key)));
}

bool close_key_handle(HKEY handle) {
    return object_of_kind<KeyObject>(handle) != nullptr && close_handle(handle);
}

std::optional<std::vector<std::string_view>> names_of(std::string_view path) {
    if (path.starts_with('\\')) return std::nullopt;
    std::vector<std::string_view> names;
    while (!path.empty()) {
        const auto end = std::min(path.find('\\'), path.size());
        if (end > 0) names.push_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return names;
}

KeyNumber find_path(RegistryTables& tables, KeyNumber key,
                    const std::vector<std::string_view>& names) {
    KeyNumber found = key;
    for (const std::string_view name : names) {
        found = tables.find(found, name);
        if (found == 0) break;
    }
    if ((found == 0 || names.empty()) && !tables.has_key(key)) {
        throw RegistryFailure{ERROR_KEY_DELETED};
    }
    return found;
}

}  // namespace winapi
