#include <nmktoolbox/runtime/nmkCExceptTrans.h>
#include <seh/set_se_translator.h>

#include <cstdio>
#include <new>

#include "runtime/exception_names.h"

nmkCExceptTrans::nmkCExceptTrans(unsigned int code) noexcept : m_code(code) {}

nmkCExceptTrans::~nmkCExceptTrans() {
    // The thread has left the function at fault: its stack can overflow again.
    _resetstkoflw();
}

CRuntimeClass* nmkCExceptTrans::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* nmkCExceptTrans::GetThisClass() {
    static CRuntimeClass runtime_class = {"nmkCExceptTrans", sizeof(nmkCExceptTrans),
                                          CException::GetThisClass()};
    return &runtime_class;
}

CRuntimeClass* nmkCExceptTrans::_GetBaseClass() { return CException::GetThisClass(); }

void nmkCExceptTrans::install() { _set_se_translator(trans_func); }

int nmkCExceptTrans::GetErrorMessage(char* buffer, unsigned int, unsigned int* help_context) {
    if (help_context != nullptr) *help_context = 0;
    // Deliberate: the size is not read. Callers pass 0 with a buffer that is large enough.
    std::sprintf(buffer, "%s - (%x)", nmk_runtime::exception_name(m_code), m_code);
    return 1;
}

void nmkCExceptTrans::trans_func(unsigned int code, _EXCEPTION_POINTERS*) {
    // Deliberate: a null pointer is thrown where there is no memory. The fault is reported all the
    // same, and catchers of the type expect it.
    throw new (std::nothrow) nmkCExceptTrans(code);
}
