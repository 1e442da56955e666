// dbgLevelManager.h: finds levels by name, and lists them in the order of their registration.
#pragma once

#include <vector>

#pragma GCC visibility push(default)

class dbgLevel;

/// A registry of levels. It borrows them; a level that is destroyed removes itself.
class dbgLevelManager {
  public:
    dbgLevelManager() = default;
    dbgLevelManager(const dbgLevelManager&) = delete;
    dbgLevelManager& operator=(const dbgLevelManager&) = delete;
    ~dbgLevelManager();

    /// Adds a level at the end; null and a level that is registered already are ignored. A level
    /// that is registered with another manager is removed from that one.
    void register_level(dbgLevel* level);

    /// Removes a level; a level that is not registered here is ignored.
    void remove_level(dbgLevel* level) noexcept;

    /// The level with exactly this name, the first registered of several; null when there is none.
    dbgLevel* get_by_name(const char* name) const noexcept;

    /// Number of levels.
    int size() const noexcept;

    /// The level at a position, from 0, in the order of registration; null outside that range.
    dbgLevel* level(int position) const noexcept;

  private:
    std::vector<dbgLevel*> m_levels;
};

#pragma GCC visibility pop
