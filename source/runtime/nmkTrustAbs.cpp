#include <nmktoolbox/runtime/nmkTrustAbs.h>

nmkTrustAbs::~nmkTrustAbs() = default;
