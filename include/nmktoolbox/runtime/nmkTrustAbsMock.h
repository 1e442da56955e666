// nmkTrustAbsMock: a trust decision for tests, the same for every path.
#pragma once

#include <nmktoolbox/runtime/nmkTrustAbs.h>

class NMKTOOLBOX_EXPORT nmkTrustAbsMock : public nmkTrustAbs {
  public:
    ~nmkTrustAbsMock() override;

    /// Sets the decision, which is true at first.
    void set_ok(bool ok);

    /// The decision, whatever the path.
    bool looks_ok_to_access_path(const apPath& path) override;

  private:
    bool m_ok = true;
};
