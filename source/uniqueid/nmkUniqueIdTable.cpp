#include <nmktoolbox/uniqueid/nmkUniqueIdTable.h>

#include <vector>

namespace {

constexpr int initial_size_exponent = 4;  // 16 slots
constexpr int load_limit = 50;            // percent

}  // namespace

nmkUniqueIdTable* nmkUniqueIdTable::s_session_entities = nullptr;

nmkUniqueIdTable::nmkUniqueIdTable() : nmkUniqueIdPtrcoSet(initial_size_exponent, load_limit) {}

nmkUniqueIdTable::~nmkUniqueIdTable() = default;

nmkUniqueIdTable* nmkUniqueIdTable::session_entities() {
    if (s_session_entities == nullptr) s_session_entities = new nmkUniqueIdTable;
    return s_session_entities;
}

void nmkUniqueIdTable::delete_session_entities() {
    delete s_session_entities;
    s_session_entities = nullptr;
}

void nmkUniqueIdTable::add(const nmkUniqueIdPtr& handle) { nmkUniqueIdPtrcoSet::add(handle); }

void nmkUniqueIdTable::add(const nmkRefToObjectId& reference) { add(reference.get_id()); }

void nmkUniqueIdTable::delete_member(const nmkUniqueIdPtr& handle) { remove(handle); }

nmkUniqueIdPtr nmkUniqueIdTable::find(nmkUniqueIdPtr handle) {
    return nmkUniqueIdPtrcoSet::find(handle);
}

nmkUniqueIdPtr nmkUniqueIdTable::find(nmkRefToObjectId reference) {
    return nmkUniqueIdPtrcoSet::find(reference.get_id());
}

int nmkUniqueIdTable::member(nmkUniqueIdPtr handle) const { return contains(handle) ? 1 : 0; }

int nmkUniqueIdTable::member(nmkRefToObjectId reference) const {
    return contains(reference.get_id()) ? 1 : 0;
}

nmkRefToObjectId nmkUniqueIdTable::get_ref(nmkUniqueIdPtr handle) {
    return nmkRefToObjectId(nmkUniqueIdPtrcoSet::find(handle));
}

void nmkUniqueIdTable::rename_all_members() {
    std::vector<nmkUniqueIdPtr> members;
    members.reserve(static_cast<std::size_t>(size()));
    for (coIterator it(*this); ++it;) members.push_back(*it);
    // Deliberate: emptied before the first is renamed, since the first word of a loaded identifier
    // changes with its name, and its slot with it.
    clear();
    for (nmkUniqueIdPtr& member : members) {
        member.rename_member();
        add(member);
    }
}

nmkUniqueIdTable::nmkUniqueIdTable(const nmkUniqueIdTable&) : nmkUniqueIdTable() {}

nmkUniqueIdTable& nmkUniqueIdTable::operator=(const nmkUniqueIdTable&) { return *this; }
