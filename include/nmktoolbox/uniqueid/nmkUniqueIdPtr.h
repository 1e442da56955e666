// nmkUniqueIdPtr: a shared handle to an identifier.
//
// An entity and all references to it hold the same nmkUniqueId, so a change of it is seen by all at
// once. The identifier lives as long as its last handle.
#pragma once

#include <mfc/CObject.h>
#include <ncamcontainer/coSet.h>
#include <ncamcontainer/co_nil.h>
#include <nmktoolbox/collections/nmkPtrClaim.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkUniqueId.h>

class nmkRefToObjectId;

class NMKTOOLBOX_EXPORT nmkUniqueIdPtr : public CObject {
  public:
    /// Holds a new invalid identifier, which spends a serial.
    nmkUniqueIdPtr();

    /// Takes `identifier` over; null gives a new invalid one.
    nmkUniqueIdPtr(nmkPtrClaim, nmkUniqueId* identifier);

    /// Copies share the identifier.
    nmkUniqueIdPtr(const nmkUniqueIdPtr& other) = default;
    nmkUniqueIdPtr& operator=(const nmkUniqueIdPtr& other) = default;
    ~nmkUniqueIdPtr() override;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();
    static CObject* CreateObject();

    /// Equality of the identifiers by value, see nmkUniqueId::is_equal.
    bool operator==(const nmkUniqueIdPtr& other) const noexcept;

    /// The identifier.
    nmkUniqueId* operator->() noexcept { return m_target.get(); }
    const nmkUniqueId* operator->() const noexcept { return m_target.get(); }
    nmkUniqueId& operator*() noexcept { return *m_target; }
    const nmkUniqueId& operator*() const noexcept { return *m_target; }
    nmkUniqueId* get_uid() noexcept { return m_target.get(); }
    const nmkUniqueId* get_uid() const noexcept { return m_target.get(); }

    const nmkUniqueIdcoPrf& get_ptr() const noexcept { return m_target; }
    nmkUniqueIdcoPrf& get_modifiable_ptr() noexcept { return m_target; }

    /// The first word of the identifier; 0 without one.
    unsigned long get_hash_val() const noexcept;

    /// 1, or 0 where the identifier is invalid or missing.
    int is_valid() const noexcept;

    /// Make the identifier invalid, or valid with a new stamp and serial; all that share it follow.
    void set_invalid();
    void rename_member();

    /// Handles that share the identifier; always 2 for one that is held with coPrfExtern.
    int reference_count() const noexcept;

    /// Writes the identifier's record, or reads one into a new identifier, which this handle then
    /// holds alone: handles that shared the old one keep it. Reading spends a serial. A handle
    /// whose reading throws keeps its identifier.
    void Serialize(CArchive& archive) override;

  private:
    friend struct coObjInterface<nmkUniqueIdPtr>;
    friend struct nmk_container::NilMaker<nmkUniqueIdPtr>;
    friend struct nmk_container::NilMaker<nmkRefToObjectId>;
    friend class nmkRefToObjectId;

    struct Loaded;
    struct Empty {};

    // For empty slots of sets: no identifier, so nothing is allocated and no serial is spent.
    explicit nmkUniqueIdPtr(Empty) noexcept {}

    // A handle for nil: its identifier is invalid and spends no serial.
    static nmkUniqueIdPtr nil_handle();

    nmkUniqueIdcoPrf m_target;
};

/// The hash for sets: the first word of the identifier.
NMKTOOLBOX_EXPORT unsigned int co_hash(const nmkUniqueIdPtr& handle);

/// Loads a handle with its class; the caller owns it.
NMKTOOLBOX_EXPORT CArchive& operator>>(CArchive& archive, nmkUniqueIdPtr*& handle);

template <>
struct UT_EXPORT coObjInterface<nmkUniqueIdPtr> {
    static unsigned int obj_hash(const nmkUniqueIdPtr& element) { return co_hash(element); }
    static int obj_compare(const nmkUniqueIdPtr& a, const nmkUniqueIdPtr& b) {
        return a == b ? 0 : 1;
    }
    static nmkUniqueIdPtr obj_empty() noexcept { return nmkUniqueIdPtr(nmkUniqueIdPtr::Empty()); }
};

namespace nmk_container {

/// Nil is made at the first look-up that finds nothing, which must not change the serials.
template <>
struct NilMaker<nmkUniqueIdPtr> {
    static std::shared_ptr<const nmkUniqueIdPtr> make() {
        return std::make_shared<const nmkUniqueIdPtr>(nmkUniqueIdPtr::nil_handle());
    }
};

}  // namespace nmk_container

using nmkUniqueIdPtrcoSet = coSet<nmkUniqueIdPtr>;

extern template class coSet<nmkUniqueIdPtr>;
