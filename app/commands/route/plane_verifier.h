// plane_verifier.h: decides which cells a route may pass, and records the closed ones.
//
// A cell outside the lattice or blocked is refused for good. If corners are kept clear, a diagonal
// step beside a blocked cell is refused for this parent only: the cell may still be reached from
// another side.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/search/nmk2dSearchNodeVerifier.h>

#include <stdexcept>
#include <vector>

#include "formats/lattice/route_plane.h"

namespace nmk_route {

/// Thrown out of a search when the progress reporter requests a stop.
struct SearchStopped : std::runtime_error {
    SearchStopped() : std::runtime_error("stopped") {}
};

/// The cells that a search has closed, in that order, and its progress reporter.
struct ClosingRecord {
    std::vector<nmk_lattice::GridCell> closed;
    nmkProgressBreak* progress = nullptr;  // borrowed; may be null
};

class PlaneVerifier : public nmk2dSearchNodeVerifier {
  public:
    /// Plane and record are borrowed.
    PlaneVerifier(const nmk_lattice::RoutePlane& plane, bool cut_corners, ClosingRecord& record);

    /// Throws SearchStopped when the progress reporter requests a stop.
    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override;

  private:
    nmkSearchNodeVerifierResult judge(const nmkSearchNode& parent,
                                      nmk_lattice::GridCell cell) const;
    bool cuts_a_corner(nmk_lattice::GridCell from, nmk_lattice::GridCell to) const;
    void note(nmk_lattice::GridCell cell) const;

    const nmk_lattice::RoutePlane& m_plane;
    bool m_cut_corners;
    ClosingRecord& m_record;
};

}  // namespace nmk_route
