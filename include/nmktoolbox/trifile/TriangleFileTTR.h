// TriangleFileTTR: reads ".ttr", a binary format of bare triangles.
//
// All numbers are little-endian:
//
//     offset  size
//          0    84  not used
//         84     4  number of triangles
//         88    32  not used: two floats and the corners of a box
//        120    36  each triangle: x y z of three corners, floats
//
// Corners are not shared; NaN is treated as in TriangleFileSTL. The box is that of the triangles.
#pragma once

#include <nmktoolbox/export.h>
#include <stlfile/TriangleFileSTL.h>

class NMKTOOLBOX_EXPORT TriangleFileTTR : public TriangleFileSTL {
  public:
    TriangleFileTTR();
    ~TriangleFileTTR() override;

    /// As in TriangleFileSTL; named here because the private one would hide it.
    int read_next(double* const corners) override { return TriangleFileSTL::read_next(corners); }

  private:
    int read_header() override;
    int read_next(double* const corners, int& flag, giColour& colour) override;
};
