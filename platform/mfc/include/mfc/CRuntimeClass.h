// CRuntimeClass.h: what is known of a class at run time, and the register of storable classes.
//
// An object stream names the class of each object. The classes that it may name are registered by
// name; CRuntimeClassRegistration does so for as long as it lives, usually as a static beside the
// class's own operations.
#pragma once

#include <string_view>

#pragma GCC visibility push(default)

class CObject;

/// What is known of a class at run time. Classes are compared by the address of this.
struct CRuntimeClass {
    /// The schema of a class whose objects cannot be stored.
    static constexpr unsigned int no_schema = 0xFFFF;

    /// Added to the schema of a class that reads data of every schema. Never stored.
    static constexpr unsigned int versionable = 0x80000000;

    const char* m_lpszClassName;         // borrowed; a literal
    int m_nObjectSize;                   // bytes
    const CRuntimeClass* m_pBaseClass;   // null for the root
    unsigned int m_wSchema = no_schema;  // 16 bits, and perhaps the flag `versionable`
    CObject* (*m_pfnCreateObject)() =
        nullptr;  // makes an object with new; null where that is impossible

    /// True when this is `base_class` or derives from it at any distance; false for null.
    bool IsDerivedFrom(const CRuntimeClass* base_class) const noexcept;

    /// A new object of the class, which the caller owns; null where objects cannot be made.
    CObject* CreateObject() const;

    /// The part of the schema that an object stream stores.
    unsigned int stored_schema() const noexcept { return m_wSchema & 0xFFFF; }
    bool is_storable() const noexcept { return m_wSchema != no_schema; }
    bool is_versionable() const noexcept { return is_storable() && (m_wSchema & versionable) != 0; }

    /// The registered class of that name, the one that was registered first where there are
    /// several; null where there is none. Safe from any thread.
    static const CRuntimeClass* FromName(std::string_view name);
};

/// Keeps a class registered by its name as long as it lives. Safe from any thread.
class CRuntimeClassRegistration {
  public:
    /// `registered` is borrowed and must outlive this.
    explicit CRuntimeClassRegistration(const CRuntimeClass* registered);
    CRuntimeClassRegistration(const CRuntimeClassRegistration&) = delete;
    CRuntimeClassRegistration& operator=(const CRuntimeClassRegistration&) = delete;
    ~CRuntimeClassRegistration();

  private:
    const CRuntimeClass* m_registered;
};

#pragma GCC visibility pop
