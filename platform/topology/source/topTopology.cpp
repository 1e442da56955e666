#include <topology/topTopology.h>

topTopology::~topTopology() = default;
