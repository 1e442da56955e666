// nmkTrustAbs: the host's decision whether a path may be accessed, a service whose name the host
// chooses.
#pragma once

#include <apsl/apPath.h>
#include <nmktoolbox/export.h>
#include <utils/utService.h>

class NMKTOOLBOX_EXPORT nmkTrustAbs : public utService {
  public:
    ~nmkTrustAbs() override;

    /// Whether the host allows access to `path`.
    virtual bool looks_ok_to_access_path(const apPath& path) = 0;
};
