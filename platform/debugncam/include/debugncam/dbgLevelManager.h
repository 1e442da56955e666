// dbgLevelManager.h: finds levels by name, and walks them in the order of their registration.
#pragma once

#include <vector>

#pragma GCC visibility push(default)

class dbgLevel;

/// A registry of levels. It borrows them; a level that ends takes itself out.
class dbgLevelManager {
  public:
    dbgLevelManager() = default;
    dbgLevelManager(const dbgLevelManager&) = delete;
    dbgLevelManager& operator=(const dbgLevelManager&) = delete;
    ~dbgLevelManager();

    /// Adds a level at the end; null and a level that is in already are ignored. A level that is
    /// registered elsewhere moves here.
    void register_level(dbgLevel* level);

    /// Takes a level out; one that is not in is ignored.
    void remove_level(dbgLevel* level) noexcept;

    /// The level of exactly this name, the first registered if several have it; null if none has.
    dbgLevel* get_by_name(const char* name) const noexcept;

    /// Number of levels.
    int size() const noexcept;

    /// The level at a position, from 0, in order of registration; null outside.
    dbgLevel* level(int position) const noexcept;

  private:
    std::vector<dbgLevel*> m_levels;
};

#pragma GCC visibility pop
