#include <nmktoolbox/search/nmkSearchNodeVerifier.h>

nmkSearchNodeVerifier::~nmkSearchNodeVerifier() = default;
