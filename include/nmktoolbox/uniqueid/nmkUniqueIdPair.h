// nmkUniqueIdPair: two references in their order.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectId.h>

class NMKTOOLBOX_EXPORT nmkUniqueIdPair {
  public:
    void set(const nmkRefToObjectId& uid1, const nmkRefToObjectId& uid2);

    const nmkRefToObjectId& uid1() const noexcept { return m_uid1; }
    const nmkRefToObjectId& uid2() const noexcept { return m_uid2; }

    /// 1 where both are equal in their order, so that (a, b) differs from (b, a); else 0.
    int is_equal(const nmkUniqueIdPair& other) const noexcept;
    bool operator==(const nmkUniqueIdPair& other) const noexcept { return is_equal(other) != 0; }

    /// 1 where both references are valid; else 0.
    int is_valid() const noexcept;

  private:
    nmkRefToObjectId m_uid1;
    nmkRefToObjectId m_uid2;
};

/// The exclusive-or of both hashes, which is the same for (a, b) and (b, a).
NMKTOOLBOX_EXPORT unsigned int co_hash(const nmkUniqueIdPair& pair);
