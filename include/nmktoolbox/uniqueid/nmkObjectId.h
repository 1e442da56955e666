// nmkObjectId: the identity of an entity that others refer to.
//
// The entity carries an nmkObjectId, whoever points at it an nmkRefToObjectId; both share one
// identifier. When the entity goes, its identifier turns invalid, which all references see: there
// is no list of references, and nobody is notified. An identity is never copied.
//
// Nothing is locked. Loading and saving run on one thread at a time, since the session's table has
// no lock either.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkActionBlocker.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectId.h>

class NMKTOOLBOX_EXPORT nmkObjectId : public CObject {
  public:
    /// A new valid identity, which spends a serial.
    nmkObjectId();
    nmkObjectId(const nmkObjectId&) = delete;
    nmkObjectId& operator=(const nmkObjectId&) = delete;

    /// Makes the identifier invalid for all that share it, which spends a serial.
    ~nmkObjectId() override;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();
    static CObject* CreateObject();

    /// A reference to this.
    nmkRefToObjectId create_reference();

    /// The identifier.
    const nmkUniqueId* get_uid() const noexcept { return m_id.get_uid(); }

    /// 1 where the identifiers are equal by value, see nmkUniqueId::is_equal; else 0.
    int is_equal(const nmkObjectId& other) const noexcept;

    /// 1 where the reference shares this very identifier; an equal one is not enough. Else 0.
    int is_target_of(const nmkRefToObjectId& reference) const noexcept;

    int is_valid() const noexcept { return m_id.is_valid(); }

    /// Renames the identifier in place: all references follow.
    void mutate();

    /// Protection keeps identifiers that are loaded out of the session's table; they are still
    /// looked up there. It is on while the flag is set and a guard
    /// nmkActionBlocker<nmkProtectIdTag> lives.
    static void protect_id(bool flag);
    static bool protect_id();

    /// Handles that share the identifier, this one included.
    int reference_count() const noexcept { return m_id.reference_count(); }

    /// Exchanges the identities: references to the one refer to the other from now on.
    void swap_ids(nmkObjectId& other);

    /// Takes a new identity. The references keep the old identifier, which stays valid and has no
    /// owner any more. Spends two serials.
    void uncouple();

    /// Writes the identifier's record, valid or not. Reading takes a new identifier, shares that of
    /// an equal member of the session's table, or enters the table, unless protect_id. One that
    /// reads as invalid is renamed first. References to the old identifier keep it. An owner whose
    /// reading throws keeps its identifier.
    void Serialize(CArchive& archive) override;

  private:
    friend class nmkObjectIdAccessor;

    nmkUniqueIdPtr get_id() const { return m_id; }
    void invalidate();

    static bool s_protect_flag;

    nmkUniqueIdPtr m_id;
};

/// Loads an owner with its class; the caller owns it.
NMKTOOLBOX_EXPORT CArchive& operator>>(CArchive& archive, nmkObjectId*& object);
