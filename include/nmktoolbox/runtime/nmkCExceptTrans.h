// nmkCExceptTrans: a fault of the processor as an exception.
//
// A calculation may run into a fault deep in numerical code: an access violation, a division by
// zero. In a thread that has called install() such a fault is thrown, as a pointer to an object on
// the heap:
//
//     nmkCExceptTrans::install();
//     try {
//         calculate();
//     } catch (nmkCExceptTrans* fault) {
//         char message[64];
//         fault->GetErrorMessage(message, sizeof message, nullptr);
//         fault->Delete();
//     }
//
// Code that is left that way has to be compiled for it: by GCC with -fnon-call-exceptions, which
// the installed package hands on. docs/faults.md lists what is translated and what is not.
#pragma once

#include <mfc/CException.h>
#include <nmktoolbox/export.h>

struct _EXCEPTION_POINTERS;

class NMKTOOLBOX_EXPORT nmkCExceptTrans : public CException {
  public:
    /// A fault with that code: 0xC0000005 for an access violation, say.
    explicit nmkCExceptTrans(unsigned int code) noexcept;
    ~nmkCExceptTrans() override;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();

    /// From now on faults of the calling thread, and of no other, are thrown. The catcher disposes
    /// of the exception with Delete(). Where there is no memory for it a null pointer is thrown.
    static void install();

    /// Writes the name of the fault and its code, "EXCEPTION_ACCESS_VIOLATION - (c0000005)", to
    /// `buffer`; "EXCEPTION_UNKNOWN" is the name of a code without one.
    ///
    ///   buffer        has room for 64 characters
    ///   size          not read
    ///   help_context  set to 0 when it is not null
    ///   returns       1
    int GetErrorMessage(char* buffer, unsigned int size, unsigned int* help_context) override;

  private:
    static void trans_func(unsigned int code, _EXCEPTION_POINTERS* pointers);

    unsigned int m_code;
};
