#include <nmktoolbox/uniqueid/nmkMachinableComponentPtr.h>

unsigned int co_hash(const nmkMachinableComponentPtr& component) {
    return coObjInterface<nmkMachinableComponent*>::obj_hash(component());
}

template class coSet<nmkMachinableComponentPtr>;
