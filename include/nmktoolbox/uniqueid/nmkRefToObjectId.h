// nmkRefToObjectId: a reference to an entity that carries an nmkObjectId.
//
// It holds the identifier of its target and no pointer to it, so it stays safe when the target goes
// (it then reads as invalid) and survives saving: references and targets that are loaded with equal
// identifiers are joined again, in whatever order they come.
#pragma once

#include <ncamcontainer/coDList.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdPtr.h>

class NMKTOOLBOX_EXPORT nmkRefToObjectId : public CObject {
  public:
    /// Refers to nothing: a new invalid identifier of its own, which spends a serial.
    nmkRefToObjectId();

    /// Copies share the target.
    nmkRefToObjectId(const nmkRefToObjectId& other) = default;
    nmkRefToObjectId& operator=(const nmkRefToObjectId& other) = default;
    ~nmkRefToObjectId() override;

    CRuntimeClass* GetRuntimeClass() const override;
    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();
    static CObject* CreateObject();

    /// Refers to the same target.
    void become(const nmkRefToObjectId& other);
    void become(const nmkUniqueIdPtr& handle);

    /// The identifier of the target.
    const nmkUniqueId* get_uid() const noexcept { return m_id.get_uid(); }

    /// The first word of that identifier.
    unsigned long get_hash_val() const noexcept { return m_id.get_hash_val(); }

    /// 1, or 0 where the target is gone or never was.
    int is_valid() const noexcept { return m_id.is_valid(); }

    /// 1 where both are invalid, or both valid with equal identifiers; else 0.
    int is_equal(const nmkRefToObjectId& other) const noexcept;
    bool operator==(const nmkRefToObjectId& other) const noexcept { return is_equal(other) != 0; }

    /// The order of the identifiers, see nmkUniqueId::operator<.
    bool operator<(const nmkRefToObjectId& other) const noexcept;

    /// Refers to nothing from now on, by a new invalid identifier of its own; the former target and
    /// other references to it are not touched.
    void set_invalid();

    /// Writes the identifier's record. Reading shares the identifier of an equal member of the
    /// session's table; where there is none, a valid one enters the table for the target to find,
    /// unless nmkObjectId::protect_id. A reference whose reading throws keeps its target.
    void Serialize(CArchive& archive) override;

  private:
    friend class nmkObjectId;
    friend class nmkUniqueIdTable;
    friend struct coObjInterface<nmkRefToObjectId>;
    friend struct nmk_container::NilMaker<nmkRefToObjectId>;

    explicit nmkRefToObjectId(const nmkUniqueIdPtr& handle) : m_id(handle) {}

    void set_id(const nmkUniqueIdPtr& handle);
    const nmkUniqueIdPtr& get_id() const noexcept { return m_id; }
    nmkUniqueIdPtr& private_get_modifiable_ptr() noexcept { return m_id; }

    nmkUniqueIdPtr m_id;
};

/// Orders references in ordered containers.
struct nmkRefToObjectIdLessThan {
    bool operator()(const nmkRefToObjectId& a, const nmkRefToObjectId& b) const noexcept {
        return a < b;
    }
};

/// The hash for sets: the first word of the identifier.
NMKTOOLBOX_EXPORT unsigned int co_hash(const nmkRefToObjectId& reference);

/// Loads a reference with its class; the caller owns it.
NMKTOOLBOX_EXPORT CArchive& operator>>(CArchive& archive, nmkRefToObjectId*& reference);

template <>
struct UT_EXPORT coObjInterface<nmkRefToObjectId> {
    static unsigned int obj_hash(const nmkRefToObjectId& element) { return co_hash(element); }
    static int obj_compare(const nmkRefToObjectId& a, const nmkRefToObjectId& b) {
        return a == b ? 0 : 1;
    }
    static nmkRefToObjectId obj_empty() {
        return nmkRefToObjectId(coObjInterface<nmkUniqueIdPtr>::obj_empty());
    }
};

namespace nmk_container {

template <>
struct NilMaker<nmkRefToObjectId> {
    static std::shared_ptr<const nmkRefToObjectId> make() {
        return std::make_shared<const nmkRefToObjectId>(
            nmkRefToObjectId(nmkUniqueIdPtr::nil_handle()));
    }
};

}  // namespace nmk_container

using nmkRefToObjectIdcoSet = coSet<nmkRefToObjectId>;
using nmkRefToObjectIdcoDList = coDList<nmkRefToObjectId>;

extern template class coSet<nmkRefToObjectId>;
