#include "registry_failure.h"

#include "failure.h"

namespace winapi {

namespace {

DWORD reason_of_system_error(const SqliteFailure& failure, DWORD otherwise) {
    if (failure.code == SQLITE_IOERR_SHMSIZE) return ERROR_DISK_FULL;
    if (failure.error_number == 0) return otherwise;
    const DWORD reason = last_error_of(failure.error_number, "");
    return reason == ERROR_GEN_FAILURE ? otherwise : reason;
}

}  // namespace

DWORD reason_of(const SqliteFailure& failure) {
    switch (failure.code & 0xFF) {
        case SQLITE_FULL:
            return ERROR_DISK_FULL;
        case SQLITE_READONLY:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return ERROR_ACCESS_DENIED;
        case SQLITE_CANTOPEN:
            return reason_of_system_error(failure, ERROR_ACCESS_DENIED);
        case SQLITE_NOMEM:
        case SQLITE_TOOBIG:
            return ERROR_NOT_ENOUGH_MEMORY;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            return ERROR_BUSY;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return ERROR_REGISTRY_CORRUPT;
        default:
            return reason_of_system_error(failure, ERROR_REGISTRY_IO_FAILED);
    }
}

}  // namespace winapi
