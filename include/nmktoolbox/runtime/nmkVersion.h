// nmkVersion.h: a version level, a named integer that selects between behaviours of a feature.
//
// A level has up to three settings: the earlier behaviour (previous), the standard one (default)
// and one under trial (preview). The integers have a meaning only for the code that reads them; a
// negative one means that the setting does not exist. All 196 levels of the kernel are registered,
// in byte order of their names, when the library is loaded, or at an earlier first use.
//
// No text is copied. Nothing is locked: change levels while no calculation runs.
#pragma once

#include <debugncam/dbgLevel.h>
#include <debugncam/dbgLevelManager.h>
#include <nmktoolbox/export.h>

/// One version level. A consumer calls nmkVersion::get_from_manager("itemsorter").get_level() for
/// each calculation, so that a level changed between two calculations affects the second one.
class NMKTOOLBOX_EXPORT nmkVersion : public dbgLevel {
  public:
    /// Makes a level at its default setting, and registers it with the shared manager.
    ///
    ///   previous, default_level, preview   in this order; negative: there is no such setting
    ///   prerelease                         not 0: of interest only before a release
    nmkVersion(const char* name, const char* description, int previous, int default_level,
               int preview, const char* documentation_link, int prerelease);
    ~nmkVersion() override;

    /// The word for the current state: "unavailable", "default", "previous", "preview" or
    /// "unknown".
    const char* get_current() const;

    /// The integer of each setting.
    int get_default_level() const;
    int get_previous_level() const;
    int get_preview_level() const;

    /// Sets the current level to the default level, even a negative one. Returns 1.
    int set_default();

    /// Sets the current level to the previous level and returns 1. Returns 0 and changes nothing
    /// when there is no previous level.
    int set_previous();

    /// Sets the current level to the preview level and returns 1. Returns 0 and changes nothing
    /// when there is no preview level.
    int set_preview();

    /// The manager of all version levels, which is not the manager of plain debug levels.
    static dbgLevelManager* get_manager();

    /// Whether a version level of exactly this name is registered; false for null.
    static bool is_level(const char* name);

    /// The version level of exactly this name. For any other name, null included, it returns one
    /// shared object that is not registered and reads "unavailable"; a change of its level is lost
    /// at the next such call. Ask is_level() first when the name comes from outside.
    static nmkVersion& get_from_manager(const char* name);

  protected:
    dbgLevelManager* get_manager_virtual() const override;

  private:
    enum class Unregistered { unregistered };
    explicit nmkVersion(Unregistered);

    static dbgLevelManager* ensure_manager();
    static nmkVersion* find(const char* name);
    static void register_table();

    static dbgLevelManager* m_manager;

    int m_previous_level;
    int m_preview_level;
    int m_default_level;
};
