#include <nmktoolbox/uniqueid/nmkActionBlocker.h>

template class nmkActionBlocker<nmkProtectIdTag>;
