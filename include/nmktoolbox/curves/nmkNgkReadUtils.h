// nmkNgkReadUtils: what nmkNgkWriteUtils has written, read back.
#pragma once

#include <ngk/ngkCurve.h>
#include <ngk/ngkSurf.h>
#include <nmktoolbox/export.h>

class topTopology;
using topTopologyPtr = coPrf<const topTopology>;

class NMKTOOLBOX_EXPORT nmkNgkReadUtils {
  public:
    /// Reads the curve of a file that has one.
    ///
    ///   curve    written; empty in a failure, and where an empty handle was stored
    ///   returns  0; ENOENT for no such file, and for one without a curve; EBADMSG for another kind
    ///            of file, and for a curve that is cut, forged or of another version; EINVAL for a
    ///            null or empty name; else the errno of the disk
    static int read_single_curve(char const* filename, ngkCurvePtr3& curve);

    /// The same for a surface.
    static int read_single_surface(char const* filename, ngkSurfPtr& surface);

    /// The same for a part of a boundary.
    static int read_single_topology(char const* filename, topTopologyPtr& topology);

  private:
    nmkNgkReadUtils() = delete;
};
