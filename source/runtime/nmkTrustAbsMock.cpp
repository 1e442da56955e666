#include <nmktoolbox/runtime/nmkTrustAbsMock.h>

nmkTrustAbsMock::~nmkTrustAbsMock() = default;

void nmkTrustAbsMock::set_ok(bool ok) { m_ok = ok; }

bool nmkTrustAbsMock::looks_ok_to_access_path(const apPath& /*path*/) { return m_ok; }
