#include <nmktoolbox/collections/CRuntimeClassPtrObj.h>

unsigned int co_hash(const CRuntimeClassPtrObj& runtime_class) {
    return coObjInterface<const CRuntimeClass*>::obj_hash(runtime_class.get());
}

template class coSet<CRuntimeClassPtrObj>;
template class coTable<CRuntimeClassPtrObj, utString>;
