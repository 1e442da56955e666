// utService: what the library asks of its host, found by name.
//
// A service is an object of a class that derives from utService. The host makes it, registers it
// with the registry of the process, and keeps it; a service that is destroyed is removed from the
// registry. The registry may be used from any thread; a service that is found must not be destroyed
// while it is in use.
#pragma once

#include <utils/utExport.h>
#include <utils/utServiceName.h>

class UT_EXPORT utService {
  public:
    utService() noexcept = default;
    utService(const utService&) = delete;
    utService& operator=(const utService&) = delete;

    /// The registry of the process, which is itself a service.
    static utService& get_instance();

    /// The service registered under `name`, else the one under `alternative`, as a Service. Null if
    /// there is no such service, or if it is not a Service. An empty name finds nothing.
    template <class Service>
    Service* locate_service(const utServiceName& name, const utServiceName& alternative) {
        return dynamic_cast<Service*>(do_locate_service(name, alternative));
    }

    /// The service registered under `name`, else the one under `alternative`, else null.
    virtual utService* do_locate_service(const utServiceName& name,
                                         const utServiceName& alternative);

    /// Removes the service from the registry.
    virtual ~utService();

    /// Registers `service` under `name` in place of an earlier one, and returns 1; null removes the
    /// registration. Returns 0, and nothing changes, when the name is empty. One service may be
    /// registered under several names; it is borrowed.
    virtual int register_service(const utServiceName& name, utService* service);
};
