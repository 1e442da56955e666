#include <debugncam/dbgLevel.h>
#include <debugncam/dbgLevelManager.h>

dbgLevel::dbgLevel(const char* name, const char* description, int level, const char* link,
                   const char* source_file, int prerelease)
    : m_name(name),
      m_level(level),
      m_description(description),
      m_link(link),
      m_source_file(source_file),
      m_prerelease(prerelease) {
    get_manager()->register_level(this);
}

dbgLevel::~dbgLevel() {
    if (m_registered_with != nullptr) m_registered_with->remove_level(this);
}

dbgLevelManager* dbgLevel::get_manager() {
    // Never deleted: static levels of any library remove themselves while the process ends.
    static auto* const manager = new dbgLevelManager;
    return manager;
}

dbgLevelManager* dbgLevel::get_manager_virtual() const { return get_manager(); }
