#include <utils/utService.h>

#include <map>
#include <mutex>

namespace {

struct Registry {
    std::mutex mutex;
    std::map<utServiceName, utService*> services;
};

// Never deleted, nor is the instance: static services of any library leave it while the process
// ends.
Registry& registry() {
    static auto* const only = new Registry;
    return *only;
}

utService* find(const Registry& all, const utServiceName& name) {
    const auto found = all.services.find(name);
    return found != all.services.end() ? found->second : nullptr;
}

}  // namespace

utService& utService::get_instance() {
    static auto* const instance = new utService;
    return *instance;
}

utService* utService::do_locate_service(const utServiceName& name,
                                        const utServiceName& alternative) {
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    utService* const service = find(all, name);
    return service != nullptr ? service : find(all, alternative);
}

utService::~utService() {
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    std::erase_if(all.services, [this](const auto& entry) { return entry.second == this; });
}

int utService::register_service(const utServiceName& name, utService* service) {
    if (name.is_empty()) return 0;
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    if (service != nullptr) {
        all.services[name] = service;
    } else {
        all.services.erase(name);
    }
    return 1;
}
