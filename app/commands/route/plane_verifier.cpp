// plane_verifier: which cells of a lattice a route may pass.

#include "commands/route/plane_verifier.h"

namespace nmk_route {

nmkSearchNodeVerifierResult PlaneVerifier::verify(const nmkLatticeCell* parent,
                                                  nmkLatticeCell cell) const {
    if (!m_plane.contains(cell) || m_plane.is_blocked(cell)) {
        return nmkSearchNodeVerifierResult::refused_for_good;
    }
    if (!m_cut_corners && parent != nullptr && cuts_a_corner(*parent, cell)) {
        return nmkSearchNodeVerifierResult::refused_for_this_parent;
    }
    return nmkSearchNodeVerifierResult::accepted;
}

bool PlaneVerifier::cuts_a_corner(nmkLatticeCell from, nmkLatticeCell to) const {
    return m_plane.is_blocked({from.column, to.row}) || m_plane.is_blocked({to.column, from.row});
}

}  // namespace nmk_route
