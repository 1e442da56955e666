// session_join.h: how what was just loaded meets the session's table.
#pragma once

#include <nmktoolbox/uniqueid/nmkUniqueIdTable.h>

namespace nmk_uniqueid {

/// Where the table has an equal member, `handle` becomes that member. Otherwise it enters the table
/// itself, if it may. One search of the table in either case.
inline void join_session(nmkUniqueIdPtr& handle, bool may_enter) {
    nmkUniqueIdPtrcoSet& table = *nmkUniqueIdTable::session_entities();
    const nmkUniqueIdPtr& member = may_enter ? table.add(handle) : table.find(handle);
    if (&member != &nmkUniqueIdPtrcoSet::nil()) handle = member;
}

}  // namespace nmk_uniqueid
