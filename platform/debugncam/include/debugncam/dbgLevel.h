// dbgLevel.h: a named integer that code asks at run time and an operator may move.
//
// No text is copied: names, descriptions and links are literals of whoever makes the level. Reads
// and writes of the integer are plain; a level is not to be moved while a calculation reads it.
#pragma once

#pragma GCC visibility push(default)

class dbgLevelManager;

/// One level. Its address is what the manager keeps, so it is neither copied nor moved.
class dbgLevel {
  public:
    /// Makes a level and registers it with the manager of plain levels.
    ///
    ///   source_file    where the level is made, for the operator; may be null
    ///   prerelease     not 0: of interest only before a release
    dbgLevel(const char* name, const char* description, int level, const char* link,
             const char* source_file, int prerelease);
    dbgLevel(const dbgLevel&) = delete;
    dbgLevel& operator=(const dbgLevel&) = delete;

    /// Leaves the manager that the level is registered with, if any.
    virtual ~dbgLevel();

    int get_level() const noexcept { return m_level; }
    void set_level(int level) noexcept { m_level = level; }
    const char* get_name() const noexcept { return m_name; }
    const char* get_description() const noexcept { return m_description; }
    const char* get_link() const noexcept { return m_link; }
    const char* get_source_file() const noexcept { return m_source_file; }
    int get_prerelease() const noexcept { return m_prerelease; }

    /// The manager of all levels that are made by the public constructor, created on first use.
    static dbgLevelManager* get_manager();

  protected:
    /// For derived classes, which fill the fields and register the level with their own manager.
    dbgLevel() = default;

    /// The manager that levels of the object's class belong to.
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
