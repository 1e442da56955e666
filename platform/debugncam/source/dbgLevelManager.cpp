#include <debugncam/dbgLevel.h>
#include <debugncam/dbgLevelManager.h>

#include <algorithm>
#include <cstring>

dbgLevelManager::~dbgLevelManager() {
    for (dbgLevel* level : m_levels) level->m_registered_with = nullptr;
}

void dbgLevelManager::register_level(dbgLevel* level) {
    if (level == nullptr || level->m_registered_with == this) return;
    m_levels.push_back(level);
    if (level->m_registered_with != nullptr) level->m_registered_with->remove_level(level);
    level->m_registered_with = this;
}

void dbgLevelManager::remove_level(dbgLevel* level) noexcept {
    const auto found = std::find(m_levels.begin(), m_levels.end(), level);
    if (found == m_levels.end()) return;
    (*found)->m_registered_with = nullptr;
    m_levels.erase(found);
}

dbgLevel* dbgLevelManager::get_by_name(const char* name) const noexcept {
    if (name == nullptr) return nullptr;
    const auto has_name = [name](const dbgLevel* level) {
        return level->m_name != nullptr && std::strcmp(level->m_name, name) == 0;
    };
    const auto found = std::find_if(m_levels.begin(), m_levels.end(), has_name);
    return found != m_levels.end() ? *found : nullptr;
}

int dbgLevelManager::size() const noexcept { return static_cast<int>(m_levels.size()); }

dbgLevel* dbgLevelManager::level(int position) const noexcept {
    if (position < 0 || position >= size()) return nullptr;
    return m_levels[static_cast<std::size_t>(position)];
}
