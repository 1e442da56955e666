// utTypeID.h: the run-time type of a class, for families that carry their own.
//
// A class C of such a family has one utTypeID, made on first use inside its static
// ut_static_type(), which refers to the type of C's base. ut_dynamic_type() returns the type of an
// object, ut_is_kind_of() also compares with the types of its bases, and ut_dynamic_cast() converts
// a pointer to a base to a C* or null. Types are compared by address: two types with the same name
// are different.
#pragma once

#include <utils/utExport.h>

/// One run-time type. Lives for the whole process; neither copied nor moved.
class UT_EXPORT utTypeID {
  public:
    /// `name` and `base` are borrowed and must outlive the object; pass a literal as the name.
    explicit utTypeID(const char* name, const utTypeID* base = nullptr) noexcept
        : m_name(name), m_base(base) {}
    utTypeID(const utTypeID&) = delete;
    utTypeID& operator=(const utTypeID&) = delete;

    /// The name given at construction; only for messages.
    const char* name() const noexcept { return m_name; }

    /// The type of the base class; null for the root of a family.
    const utTypeID* base() const noexcept { return m_base; }

    /// True when this is `other`, or derives from it directly or indirectly.
    bool is_kind_of(const utTypeID& other) const noexcept {
        for (const utTypeID* type = this; type != nullptr; type = type->m_base) {
            if (type == &other) return true;
        }
        return false;
    }

    bool operator==(const utTypeID& other) const noexcept { return this == &other; }

  private:
    const char* m_name;
    const utTypeID* m_base;
};
