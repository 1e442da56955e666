#include <ncamcontainer/co_nil.h>

#include <dlfcn.h>

#include <map>
#include <mutex>
#include <tuple>
#include <typeindex>
#include <utility>

namespace {

// Two libraries may hide different classes of one name; the size keeps most of those apart.
using Key = std::tuple<std::type_index, std::size_t, std::size_t>;

struct Registry {
    std::mutex mutex;
    std::map<Key, std::shared_ptr<const void>> elements;
};

Registry& registry() {
    // Never deleted: static objects of any library may still compare with nil while they end.
    static auto* const kept = new Registry;
    return *kept;
}

// The element may have virtual functions, and its type has a name: both lie in the library that
// asked first. A library that cannot be found this way is the program itself, which stays anyway.
void keep_library_loaded(const std::type_info& type) {
    Dl_info info{};
    if (dladdr(&type, &info) == 0 || info.dli_fname == nullptr) return;
    dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}

}  // namespace

const void* nmk_container::registered_nil(const NilType& type) {
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    const auto entry = all.elements.find(Key(type.container, type.size, type.alignment));
    return entry == all.elements.end() ? nullptr : entry->second.get();
}

const void* nmk_container::registered_nil(const NilType& type, std::shared_ptr<const void> made) {
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    const Key key(type.container, type.size, type.alignment);
    const auto [entry, added] = all.elements.try_emplace(key, std::move(made));
    if (added) keep_library_loaded(type.container);
    return entry->second.get();
}
