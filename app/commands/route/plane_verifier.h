// plane_verifier.h: which cells of a lattice a route may pass.
//
// A cell outside the lattice or blocked is refused for good. Where corners are to be left clear, a
// diagonal step beside a blocked cell is refused for this parent only: the cell may still be
// reached from another side.
#pragma once

#include <nmktoolbox/search/nmkLatticeRoute.h>

#include "formats/lattice/route_plane.h"

namespace nmk_route {

class PlaneVerifier : public nmkLatticeVerifier {
  public:
    /// The plane is borrowed.
    PlaneVerifier(const nmk_lattice::RoutePlane& plane, bool cut_corners)
        : m_plane(plane), m_cut_corners(cut_corners) {}

    nmkSearchNodeVerifierResult verify(const nmkLatticeCell* parent,
                                       nmkLatticeCell cell) const override;

  private:
    bool cuts_a_corner(nmkLatticeCell from, nmkLatticeCell to) const;

    const nmk_lattice::RoutePlane& m_plane;
    bool m_cut_corners;
};

}  // namespace nmk_route
