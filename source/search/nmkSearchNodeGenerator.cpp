#include <nmktoolbox/search/nmkSearchNodeGenerator.h>

nmkSearchNodeGenerator::~nmkSearchNodeGenerator() = default;
