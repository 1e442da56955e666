#include <nmktoolbox/uniqueid/nmkObjectIdAccessor.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdTable.h>

nmkObjectIdAccessor::~nmkObjectIdAccessor() = default;

void nmkObjectIdAccessor::invalidate(nmkObjectId& object) { object.invalidate(); }

void nmkObjectIdAccessor::make_valid(nmkObjectId& object, const nmkUniqueId* value) {
    object.m_id->become(value);
}

void nmkObjectIdAccessor::reseat(nmkObjectId& object, const nmkUniqueIdPtr& handle) {
    nmkUniqueIdTable& table = *nmkUniqueIdTable::session_entities();
    const bool is_member = table.member(handle) != 0;
    if (is_member) table.delete_member(handle);
    object.m_id = handle;
    if (is_member) table.add(object.m_id);
}
