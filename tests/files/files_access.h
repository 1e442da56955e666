// files_access.h: the private operations of nmkFileDir, for the tests.
#pragma once

#include <nmktoolbox/files/nmkFileDir.h>

struct nmkFileDirAccess {
    static int dirname(const utString& path, utString& parent) {
        return nmkFileDir::dirname(path, parent);
    }
    static utString get_full_path(const nmkFileDir& name) { return name.get_full_path(); }
    static int is_dir(const nmkFileDir& name, const utString& path) { return name.is_dir(path); }
    static void diagnose(const nmkFileDir& name) { name.diagnose_file_deletion_failure(); }
};
