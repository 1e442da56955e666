// nmkActionBlocker: a guard that blocks an action while it lives.
//
// The tag says which action. Guards are counted by a plain number that the whole process shares:
// make them on one thread at a time.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utExport.h>

#include <cstdint>

template <class Tag>
class UT_EXPORT nmkActionBlocker {
  public:
    nmkActionBlocker() noexcept { ++s_count; }
    nmkActionBlocker(const nmkActionBlocker&) = delete;
    nmkActionBlocker& operator=(const nmkActionBlocker&) = delete;
    ~nmkActionBlocker() { --s_count; }

    /// True while at least one guard lives.
    static bool block() noexcept { return s_count > 0; }

    static inline std::int32_t s_count = 0;
};

/// The action of entering identifiers into the session's table, see nmkObjectId::protect_id.
struct NMKTOOLBOX_EXPORT nmkProtectIdTag;

extern template class nmkActionBlocker<nmkProtectIdTag>;
