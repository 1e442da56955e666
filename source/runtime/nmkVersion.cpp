#include "version_levels_table.h"

#include <nmktoolbox/runtime/nmkVersion.h>

#include <new>

// Null before any initialiser of any library runs, so whoever comes first makes the manager.
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
    // Deliberate: this order settles ties. A level that is off reads "unavailable" even where its
    // default is negative too, and the default wins over an equal previous or preview.
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
    // Deliberate: never refused, so that a level whose default is "unavailable" can go back to it.
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

nmkVersion& nmkVersion::get_from_manager(const char* name) {
    auto* const found = dynamic_cast<nmkVersion*>(ensure_manager()->get_by_name(name));
    if (found != nullptr) return *found;
    // Never deleted: a caller may still hold it while the process ends.
    static auto* const nothing = new nmkVersion(Unregistered::unregistered);
    return *nothing;
}

dbgLevelManager* nmkVersion::get_manager_virtual() const { return ensure_manager(); }

// The manager is stored before the table is registered, since each row asks for it in turn. Neither
// it nor the rows are ever deleted: levels are read until the very end of the process.
dbgLevelManager* nmkVersion::ensure_manager() {
    if (m_manager == nullptr) {
        m_manager = new dbgLevelManager;
        register_table();
    }
    return m_manager;
}

void nmkVersion::register_table() {
    const auto table = version_levels_table();
    for (std::size_t position = 0; position < table.size(); ++position) {
        const VersionLevelRow& row = table[position];
        try {
            new nmkVersion(row.name, row.description, row.previous, row.default_level, row.preview,
                           version_level_link(position), row.prerelease);
        } catch (const std::bad_alloc&) {
            // Deliberate: a row that finds no memory is left out, and nothing is reported.
        }
    }
}

namespace {

// The table is complete as soon as the library is loaded, whether or not anybody has asked.
[[maybe_unused]] const dbgLevelManager* const made_at_load = nmkVersion::get_manager();

}  // namespace
