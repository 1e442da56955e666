// nmkFileDirIter: the entries of a directory, as names.
//
// The whole listing is made at once, so what comes or goes in the directory afterwards does not
// show; nothing is opened. Entries come in the order in which the system layer reports them, by
// byte value on our systems. It starts before the first entry:
//
//     nmkFileDirIter entries(directory, nmkFileDirIterFiles, "tri");
//     while (++entries) use(entries());
//
// A directory that does not exist, or may not be read, gives no entries.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <nmktoolbox/files/nmkFileDircoPageArr.h>

/// Which entries are listed; any other value lists none.
enum nmkFileDirIterType {
    nmkFileDirIterAll = 0,
    nmkFileDirIterFiles = 1,        // what is_file, and has the extension where one is given
    nmkFileDirIterDirectories = 2,  // what is_dir, symlinks to directories among them
};

class NMKTOOLBOX_EXPORT nmkFileDirIter : public nmkFileDircoPageArr {
  public:
    /// Lists the directory. `extension` (null: any) is not copied and must outlive the iterator;
    /// it is compared with the end of the name, without its case, and without asking for a dot.
    nmkFileDirIter(const nmkFileDir& directory, nmkFileDirIterType type, const char* extension);

    /// Lists a directory anew.
    void reset(const nmkFileDir& directory, nmkFileDirIterType type, const char* extension);

    /// Moves on; 1 when there is an entry.
    int operator++();

    /// The current entry; a name of nothing before the first and after the last.
    const nmkFileDir& operator()() const;

  private:
    int m_current = -1;
    int m_count = 0;
    const char* m_extension = nullptr;
};
