#include <fcntl.h>
#include <filesystem/directory_listing.h>
#include <nmktoolbox/files/nmkFileDirIter.h>
#include <nmktoolbox/files/nmkFilenameExt.h>
#include <unistd.h>

#include <cstddef>
#include <string>

namespace {

using nmk_filesystem::EntryKind;

// The listing knows the kind of most entries; what a symlink leads to has to be asked for.
bool is_known(EntryKind kind) { return kind == EntryKind::file || kind == EntryKind::directory; }

int is_directory_entry(const nmkFileDir& entry, EntryKind kind) {
    return is_known(kind) ? kind == EntryKind::directory : entry.is_dir();
}

int is_file_entry(const nmkFileDir& entry, EntryKind kind) {
    return is_known(kind) ? kind == EntryKind::file : entry.is_file();
}

int accepts(const nmkFileDir& entry, const char* name, EntryKind kind, nmkFileDirIterType type,
            const char* extension) {
    switch (type) {
        case nmkFileDirIterAll:
            return 1;
        case nmkFileDirIterFiles:
            if (extension != nullptr && nmkCheckFilenameExt(name, extension) == 0) return 0;
            return is_file_entry(entry, kind);
        case nmkFileDirIterDirectories:
            return is_directory_entry(entry, kind);
    }
    return 0;
}

// Without permission to search the directory, its entries may not be looked at either.
bool may_be_searched(const std::string& directory) {
    return ::faccessat(AT_FDCWD, directory.c_str(), X_OK, AT_EACCESS) == 0;
}

}  // namespace

nmkFileDirIter::nmkFileDirIter(const nmkFileDir& directory, nmkFileDirIterType type,
                               const char* extension) {
    reset(directory, type, extension);
}

void nmkFileDirIter::reset(const nmkFileDir& directory, nmkFileDirIterType type,
                           const char* extension) {
    const nmkFileDir listed(directory);  // `directory` may be an entry of this listing
    m_current = -1;
    m_count = 0;
    m_extension = extension;
    shrink(0, 0);

    const std::string path = std::string(listed.get().view()) + "/";
    nmk_filesystem::DirectoryListing entries;
    if (entries.read(path.c_str()) != 0) return;
    const bool is_searchable = may_be_searched(path);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto [name, kind] = entries[i];
        // An entry that is not accepted leaves its slot to the next.
        nmkFileDir& entry = (*this)[m_count];
        entry = listed;
        entry.add_one(name);
        m_count += accepts(entry, name, is_searchable ? kind : EntryKind::unknown, type, extension);
    }
}

int nmkFileDirIter::operator++() {
    if (m_current < m_count) ++m_current;
    return m_current < m_count ? 1 : 0;
}

const nmkFileDir& nmkFileDirIter::operator()() const {
    static const nmkFileDir no_entry;
    return m_current >= 0 && m_current < m_count ? (*this)[m_current] : no_entry;
}
