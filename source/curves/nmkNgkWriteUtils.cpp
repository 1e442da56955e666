#include <mfc/CArchive.h>
#include <ngk/ngk_persistence.h>
#include <nmktoolbox/curves/nmkNgkWriteUtils.h>
#include <pers/psArchiveFile.h>
#include <topology/top_persistence.h>

#include "archive_paths.h"

namespace {

constexpr int byte_order = psByteOrderLittle;

void require(int error) {
    if (error != 0) throw CFileException::from_os_error(error);
}

template <class Handle>
void write_single(char const* filename, const char* path, const Handle& handle) {
    ngk_initialise_persistence();
    const psArchiveFileHeader header("o", "t", "t", byte_order);
    psArchiveFile file(header, filename, psFileModeWrite);
    CArchive* archive = nullptr;
    require(file.write_archive(path, archive));
    *archive << handle;
    // The destructor closes too, but could not report a disk that is full.
    require(file.close());
}

}  // namespace

void nmkNgkWriteUtils::write_single_curve(char const* filename, ngkCurvePtr3 const& curve) {
    write_single(filename, nmk_curves::path_of_curve, curve);
}

void nmkNgkWriteUtils::write_single_surface(char const* filename, ngkSurfPtr const& surface) {
    write_single(filename, nmk_curves::path_of_surface, surface);
}

void nmkNgkWriteUtils::write_single_topology(char const* filename, topTopologyPtr const& topology) {
    write_single(filename, nmk_curves::path_of_topology, topology);
}
