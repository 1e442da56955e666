#include <mfc/CArchive.h>
#include <ngk/ngk_persistence.h>
#include <nmktoolbox/curves/nmkNgkReadUtils.h>
#include <pers/psArchiveFile.h>
#include <topology/top_persistence.h>

#include <cerrno>

#include "archive_paths.h"

namespace {

template <class Handle>
int read_single(char const* filename, const char* path, Handle& handle) {
    handle.reset();
    psArchiveFile file(psArchiveFileHeader(), filename, psFileModeRead);
    CArchive* archive = nullptr;
    if (const int error = file.read_archive(path, archive)) return error;
    try {
        *archive >> handle;
    } catch (const CFileException& failure) {
        return failure.m_lOsError != 0 ? failure.m_lOsError : EBADMSG;
    } catch (const CArchiveException&) {
        return EBADMSG;
    }
    return 0;
}

}  // namespace

int nmkNgkReadUtils::read_single_curve(char const* filename, ngkCurvePtr3& curve) {
    return read_single(filename, nmk_curves::path_of_curve, curve);
}

int nmkNgkReadUtils::read_single_surface(char const* filename, ngkSurfPtr& surface) {
    return read_single(filename, nmk_curves::path_of_surface, surface);
}

int nmkNgkReadUtils::read_single_topology(char const* filename, topTopologyPtr& topology) {
    return read_single(filename, nmk_curves::path_of_topology, topology);
}
