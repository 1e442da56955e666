// nmkUniqueIdTable: the set of all identifiers that were met in a session.
//
// While objects are loaded, the session's table joins owners and references that carry equal
// identifiers. It keeps each member alive until it is deleted: a member whose owner has gone stays
// as an invalid identifier.
//
// A member is found by the value that it had when it was added. One that is renamed or made invalid
// in place stays a member but may no longer be found; rename_all_members repairs that.
//
// For one thread, the one that loads and saves.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectId.h>

class NMKTOOLBOX_EXPORT nmkUniqueIdTable : public nmkUniqueIdPtrcoSet {
  public:
    nmkUniqueIdTable();
    ~nmkUniqueIdTable() override;

    /// The session's table, made on the first call and after it was deleted.
    /// delete_session_entities must be called to delete it; without a table that does nothing.
    static nmkUniqueIdTable* session_entities();
    static void delete_session_entities();

    /// Adds a handle; where an equal one is a member, that one stays and the new one is dropped.
    void add(const nmkUniqueIdPtr& handle);
    void add(const nmkRefToObjectId& reference);

    /// Removes the equal member, if there is one.
    void delete_member(const nmkUniqueIdPtr& handle);

    /// The equal member; where there is none the invalid handle nil(), which all of the process
    /// share: do not rename what it holds.
    nmkUniqueIdPtr find(nmkUniqueIdPtr handle);
    nmkUniqueIdPtr find(nmkRefToObjectId reference);

    /// 1 where an equal handle is a member; else 0.
    int member(nmkUniqueIdPtr handle) const;
    int member(nmkRefToObjectId reference) const;

    /// A reference to what find returns.
    nmkRefToObjectId get_ref(nmkUniqueIdPtr handle);

    /// Generates all members anew, in place: each becomes valid with a new stamp and serial, and
    /// objects and references that share it follow.
    void rename_all_members();

  protected:
    // Tables are not copied: a copy is empty, an assignment does nothing.
    nmkUniqueIdTable(const nmkUniqueIdTable& other);
    nmkUniqueIdTable& operator=(const nmkUniqueIdTable& other);

  private:
    static nmkUniqueIdTable* s_session_entities;
};
