// nmkVersion.h: a version level, the named integer behind which a change of behaviour is put.
//
// A level has up to three settings: the earlier behaviour (previous), the standard one (default)
// and one under trial (preview). The integers are only tokens for the code that asks; a negative
// one says that the setting does not exist. All 196 levels of the kernel are registered, in byte
// order of their names, before anybody can ask for one: at load, or at an earlier first use.
//
// No text is copied. Nothing is locked: move levels while no calculation runs.
#pragma once

#include <debugncam/dbgLevel.h>
#include <debugncam/dbgLevelManager.h>
#include <nmktoolbox/export.h>

/// One version level. A consumer asks nmkVersion::get_from_manager("itemsorter").get_level() each
/// time anew, so that a level moved between two calculations counts from the next one on.
class NMKTOOLBOX_EXPORT nmkVersion : public dbgLevel {
  public:
    /// Makes a level that stands at its default, and registers it with the shared manager.
    ///
    ///   previous, default_level, preview   in this order; negative where there is no such setting
    ///   prerelease                         not 0: of interest only before a release
    nmkVersion(const char* name, const char* description, int previous, int default_level,
               int preview, const char* documentation_link, int prerelease);
    ~nmkVersion() override;

    /// The word for the current state: "unavailable", "default", "previous", "preview" or
    /// "unknown".
    const char* get_current() const;

    int get_default_level() const;
    int get_previous_level() const;
    int get_preview_level() const;

    /// Moves to the default level, also where that is negative. Answers 1.
    int set_default();

    /// Moves to the previous level and answers 1; 0, and nothing changed, where there is none.
    int set_previous();

    /// Moves to the preview level and answers 1; 0, and nothing changed, where there is none.
    int set_preview();

    /// The manager of all version levels, which is not that of plain debug levels.
    static dbgLevelManager* get_manager();

    /// The level of a name. For a name that no version level has, the answer is one shared object
    /// that stands for nothing and must not be relied on; dbgLevelManager::get_by_name tells.
    static nmkVersion& get_from_manager(const char* name);

  protected:
    dbgLevelManager* get_manager_virtual() const override;

  private:
    enum class Unregistered { unregistered };
    explicit nmkVersion(Unregistered);

    static dbgLevelManager* ensure_manager();
    static void register_table();

    static dbgLevelManager* m_manager;

    int m_previous_level;
    int m_preview_level;
    int m_default_level;
};
