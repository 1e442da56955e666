// nmkNgkWriteUtils: one curve, surface or topology written to an archive file of its own.
//
// The file is a psArchiveFile, a zip, with a single stream under the name that files of geometry
// have for it; nmkNgkReadUtils reads it. What is written appears under its name when it is whole,
// and replaces the file that was there.
//
// Failures are exceptions: CFileException where the file cannot be created or completed,
// CArchiveException for what cannot be stored, which is an invalid one (see ngk_persistence.h and
// top_persistence.h). The file is as it was before then. An empty handle is written as an empty
// handle.
#pragma once

#include <ngk/ngkCurve.h>
#include <ngk/ngkSurf.h>
#include <nmktoolbox/export.h>

class topTopology;
using topTopologyPtr = coPrf<const topTopology>;

class NMKTOOLBOX_EXPORT nmkNgkWriteUtils {
  public:
    /// Under "/wireframe/Curve/1".
    static void write_single_curve(char const* filename, ngkCurvePtr3 const& curve);

    /// Under "/surface/1".
    static void write_single_surface(char const* filename, ngkSurfPtr const& surface);

    /// Under "/topology/shell/single/face/1", whatever part it is.
    static void write_single_topology(char const* filename, topTopologyPtr const& topology);

  private:
    nmkNgkWriteUtils() = delete;
};
