// handle_table.h: the objects behind the handles.
//
// A handle is a number, never an address: a closed or made-up one is found out, not followed. An
// object lives until its handle is closed and the last call that uses it has come back.
#pragma once

#include <winapi/types.h>

#include <memory>

namespace winapi {

/// Something with a handle.
class HandleObject {
  public:
    HandleObject() = default;
    HandleObject(const HandleObject&) = delete;
    HandleObject& operator=(const HandleObject&) = delete;
    virtual ~HandleObject() = default;

    /// Waits for it; WAIT_FAILED, with last error 6, for what cannot be waited for.
    virtual DWORD wait(DWORD milliseconds);

    /// Whether CloseHandle may close it; searches have a call of their own.
    virtual bool closes_by_close_handle() const { return true; }
};

/// Gives the object a handle: a multiple of 4, never null.
HANDLE open_handle(std::shared_ptr<HandleObject> object);

/// The object behind the handle; null for what is none.
std::shared_ptr<HandleObject> object_of(HANDLE handle);

/// Takes the handle back; whether there was one.
bool close_handle(HANDLE handle);

/// Around fork: no other thread is at work on the table, so the child can use it.
void handle_table_before_fork();
void handle_table_after_fork();

/// The object behind the handle if it is of that kind; else null.
template <typename Kind>
std::shared_ptr<Kind> object_of_kind(HANDLE handle) {
    return std::dynamic_pointer_cast<Kind>(object_of(handle));
}

}  // namespace winapi
