// registry_failure.h: why a call on the registry could not be done.
#pragma once

#include <winapi/last_error.h>

#include "sqlite_database.h"

namespace winapi {

/// Thrown within the registry; its calls return the reason.
struct RegistryFailure {
    DWORD reason;
};

/// The error code for a failure of SQLite.
DWORD reason_of(const SqliteFailure& failure);

}  // namespace winapi
