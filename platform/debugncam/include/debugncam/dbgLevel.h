// dbgLevel.h: a named integer that code reads at run time and an operator may change.
//
// No text is copied: names, descriptions and links are literals of the code that makes the level.
// Reads and writes of the integer are not synchronised: do not change a level while a calculation
// reads it.
#pragma once

#pragma GCC visibility push(default)

class dbgLevelManager;

/// One level. The manager keeps its address, so it cannot be copied or moved.
class dbgLevel {
  public:
    /// Makes a level and registers it with the manager of plain levels.
    ///
    ///   source_file    the file that makes the level, for the operator; may be null
    ///   prerelease     not 0: of interest only before a release
    dbgLevel(const char* name, const char* description, int level, const char* link,
             const char* source_file, int prerelease);
    dbgLevel(const dbgLevel&) = delete;
    dbgLevel& operator=(const dbgLevel&) = delete;

    /// Removes the level from the manager that it is registered with, if any.
    virtual ~dbgLevel();

    /// The current integer, and its change.
    int get_level() const noexcept { return m_level; }
    void set_level(int level) noexcept { m_level = level; }

    /// What the level was made with; texts may be null.
    const char* get_name() const noexcept { return m_name; }
    const char* get_description() const noexcept { return m_description; }
    const char* get_link() const noexcept { return m_link; }
    const char* get_source_file() const noexcept { return m_source_file; }
    int get_prerelease() const noexcept { return m_prerelease; }

    /// The manager of all levels made by the public constructor, created on first use.
    static dbgLevelManager* get_manager();

  protected:
    /// For derived classes, which set the fields and register the level with their own manager.
    dbgLevel() = default;

    /// The manager of the levels of this class.
    virtual dbgLevelManager* get_manager_virtual() const;

    const char* m_name = nullptr;
    int m_level = 0;
    const char* m_description = nullptr;
    const char* m_link = nullptr;
    const char* m_source_file = nullptr;
    int m_prerelease = 0;

  private:
    friend class dbgLevelManager;
    dbgLevelManager* m_registered_with = nullptr;
};

#pragma GCC visibility pop
