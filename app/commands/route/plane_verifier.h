// plane_verifier.h: which places of a lattice a route may pass, and a record of those it closed.
//
// A place outside the lattice or blocked is refused for good. Where corners are to be left clear, a
// diagonal step beside a blocked place is refused for this parent only: the place may still be
// reached from another side.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/search/nmk2dSearchNodeVerifier.h>

#include <stdexcept>
#include <vector>

#include "formats/lattice/route_plane.h"

namespace nmk_route {

/// Thrown out of a search that was asked to stop.
struct SearchStopped : std::runtime_error {
    SearchStopped() : std::runtime_error("stopped") {}
};

/// The places that a search has closed, in that order, and who wants to know of them.
struct ClosingRecord {
    std::vector<nmk_lattice::GridCell> closed;
    nmkProgressBreak* progress = nullptr;  // borrowed; may be null
};

class PlaneVerifier : public nmk2dSearchNodeVerifier {
  public:
    /// Plane and record are borrowed.
    PlaneVerifier(const nmk_lattice::RoutePlane& plane, bool cut_corners, ClosingRecord& record);

    /// Throws SearchStopped when the one who is told of the progress asks for it.
    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override;

  private:
    nmkSearchNodeVerifierResult judge(const nmkSearchNode& parent,
                                      nmk_lattice::GridCell place) const;
    bool cuts_a_corner(nmk_lattice::GridCell from, nmk_lattice::GridCell to) const;
    void note(nmk_lattice::GridCell place) const;

    const nmk_lattice::RoutePlane& m_plane;
    bool m_cut_corners;
    ClosingRecord& m_record;
};

}  // namespace nmk_route
