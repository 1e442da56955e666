#include "version_levels_table.h"

#include <nmktoolbox/runtime/nmkVersion.h>

#include <new>

// Null before any static initialiser runs, so the first caller makes the manager.
constinit dbgLevelManager* nmkVersion::m_manager = nullptr;

nmkVersion::nmkVersion(const char* name, const char* description, int previous, int default_level,
                       int preview, const char* documentation_link, int prerelease)
    : m_previous_level(previous), m_preview_level(preview), m_default_level(default_level) {
    m_name = name;
    m_level = default_level;
    m_description = description;
    m_link = documentation_link;
    m_source_file = nullptr;
    m_prerelease = prerelease;
    ensure_manager()->register_level(this);
}

nmkVersion::nmkVersion(Unregistered)
    : m_previous_level(-1), m_preview_level(-1), m_default_level(-1) {
    m_name = "";
    m_level = -1;
    m_description = "";
    m_link = "";
}

nmkVersion::~nmkVersion() = default;

const char* nmkVersion::get_current() const {
    const int level = get_level();
    // Deliberate: this order settles ties. A negative level reads "unavailable" even when the
    // default is negative too, and the default takes precedence over an equal previous or preview.
    if (level < 0) return "unavailable";
    if (level == m_default_level) return "default";
    if (level == m_previous_level) return "previous";
    if (level == m_preview_level) return "preview";
    return "unknown";
}

int nmkVersion::get_default_level() const { return m_default_level; }

int nmkVersion::get_previous_level() const { return m_previous_level; }

int nmkVersion::get_preview_level() const { return m_preview_level; }

int nmkVersion::set_default() {
    // Deliberate: a negative default is accepted, so that a level can return to "unavailable".
    set_level(m_default_level);
    return 1;
}

int nmkVersion::set_previous() {
    if (m_previous_level < 0) return 0;
    set_level(m_previous_level);
    return 1;
}

int nmkVersion::set_preview() {
    if (m_preview_level < 0) return 0;
    set_level(m_preview_level);
    return 1;
}

dbgLevelManager* nmkVersion::get_manager() { return ensure_manager(); }

bool nmkVersion::is_level(const char* name) { return find(name) != nullptr; }

nmkVersion& nmkVersion::get_from_manager(const char* name) {
    if (nmkVersion* const found = find(name)) return *found;
    // Never deleted: a caller may still use it while the process ends.
    static auto* const unknown = new nmkVersion(Unregistered::unregistered);
    if (unknown->get_level() != unknown->m_default_level) unknown->set_default();
    return *unknown;
}

dbgLevelManager* nmkVersion::get_manager_virtual() const { return ensure_manager(); }

// The manager is stored before the table is registered, because each row registers itself with it.
// Neither the manager nor the rows are ever deleted: levels are read until the process ends.
dbgLevelManager* nmkVersion::ensure_manager() {
    if (m_manager == nullptr) {
        m_manager = new dbgLevelManager;
        register_table();
    }
    return m_manager;
}

// Null for an unknown name, and for a level that is not a version level.
nmkVersion* nmkVersion::find(const char* name) {
    return dynamic_cast<nmkVersion*>(ensure_manager()->get_by_name(name));
}

void nmkVersion::register_table() {
    const auto table = nmk_runtime::version_levels_table();
    for (std::size_t position = 0; position < table.size(); ++position) {
        const nmk_runtime::VersionLevelRow& row = table[position];
        try {
            new nmkVersion(row.name, row.description, row.previous, row.default_level, row.preview,
                           nmk_runtime::version_level_link(position), row.prerelease);
        } catch (const std::bad_alloc&) {
            // Deliberate: a row for which there is no memory is left out, and nothing is reported.
        }
    }
}

namespace {

// Fills the table when the library is loaded, even when no level is ever read.
[[maybe_unused]] const dbgLevelManager* const made_at_load = nmkVersion::get_manager();

}  // namespace
