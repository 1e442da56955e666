#include <nmktoolbox/uniqueid/nmkUniqueIdPair.h>

void nmkUniqueIdPair::set(const nmkRefToObjectId& uid1, const nmkRefToObjectId& uid2) {
    // Copied first: either may be one of this pair's own.
    const nmkRefToObjectId second = uid2;
    m_uid1 = uid1;
    m_uid2 = second;
}

int nmkUniqueIdPair::is_equal(const nmkUniqueIdPair& other) const noexcept {
    return m_uid1 == other.m_uid1 && m_uid2 == other.m_uid2 ? 1 : 0;
}

int nmkUniqueIdPair::is_valid() const noexcept {
    return m_uid1.is_valid() != 0 && m_uid2.is_valid() != 0 ? 1 : 0;
}

unsigned int co_hash(const nmkUniqueIdPair& pair) {
    return co_hash(pair.uid1()) ^ co_hash(pair.uid2());
}
