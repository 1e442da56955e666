#include <nmktoolbox/files/nmkFileDirIter.h>
#include <nmktoolbox/files/nmkFilenameExt.h>
#include <winapi/find_file.h>
#include <winapi/types.h>

#include <string_view>

#include "file_attributes.h"

namespace {

// The listing tells most entries apart by itself; what a link leads to must be asked for.
int is_directory_entry(const nmkFileDir& entry, const WIN32_FIND_DATAA& found) {
    const bool is_told = found.dwFileAttributes != 0 && !is_link(found.dwFileAttributes);
    return is_told ? is_directory(found.dwFileAttributes) : entry.is_dir();
}

int is_file_entry(const nmkFileDir& entry, const WIN32_FIND_DATAA& found) {
    const bool is_told = found.dwFileAttributes != 0 && !is_link(found.dwFileAttributes);
    return is_told ? !is_directory(found.dwFileAttributes) : entry.is_file();
}

int accepts(const nmkFileDir& entry, const WIN32_FIND_DATAA& found, nmkFileDirIterType type,
            const char* extension) {
    switch (type) {
        case nmkFileDirIterAll:
            return 1;
        case nmkFileDirIterFiles:
            if (extension != nullptr && nmkCheckFilenameExt(found.cFileName, extension) == 0) {
                return 0;
            }
            return is_file_entry(entry, found);
        case nmkFileDirIterDirectories:
            return is_directory_entry(entry, found);
    }
    return 0;
}

}  // namespace

nmkFileDirIter::nmkFileDirIter(const nmkFileDir& directory, nmkFileDirIterType type,
                               const char* extension) {
    reset(directory, type, extension);
}

void nmkFileDirIter::reset(const nmkFileDir& given, nmkFileDirIterType type,
                           const char* extension) {
    const nmkFileDir directory(given);  // it may be an entry of this listing
    m_current = -1;
    m_count = 0;
    m_extension = extension;
    shrink(0, 0);

    nmkFileDir everything(directory);
    everything.add_one("*");
    WIN32_FIND_DATAA found;
    const HANDLE search = winapi_find_first_kind(everything.get().c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::string_view name(found.cFileName);
        if (name == "." || name == "..") continue;
        // An entry that is not accepted leaves its slot to the next.
        nmkFileDir& entry = (*this)[m_count];
        entry = directory;
        entry.add_one(found.cFileName);
        m_count += accepts(entry, found, type, extension);
    } while (FindNextFileA(search, &found) != FALSE);
    FindClose(search);
}

int nmkFileDirIter::operator++() {
    if (m_current < m_count) ++m_current;
    return m_current < m_count ? 1 : 0;
}

const nmkFileDir& nmkFileDirIter::operator()() const {
    static const nmkFileDir no_entry;
    return m_current >= 0 && m_current < m_count ? (*this)[m_current] : no_entry;
}
