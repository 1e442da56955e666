// plane_verifier: decides which cells a route may pass, and records the closed ones.

#include "commands/route/plane_verifier.h"

#include <nmktoolbox/search/nmk2dSearchNode.h>

namespace nmk_route {

namespace {

constexpr std::size_t report_every = 1024;  // closings

giBox2 box_of(const nmk_lattice::RoutePlane& plane) {
    return {plane.search_point(nmk_lattice::GridCell{0, 0}),
            plane.search_point(nmk_lattice::GridCell{plane.columns() - 1, plane.rows() - 1})};
}

}  // namespace

PlaneVerifier::PlaneVerifier(const nmk_lattice::RoutePlane& plane, bool cut_corners,
                             ClosingRecord& record)
    : nmk2dSearchNodeVerifier(box_of(plane)),
      m_plane(plane),
      m_cut_corners(cut_corners),
      m_record(record) {}

nmkSearchNodeVerifierResult PlaneVerifier::verify(const nmkSearchNode& parent,
                                                  const nmkSearchNode& node) const {
    if (!is_in_bounds(node)) {
        return nmkSearchNodeVerifierResult::refused_for_good;
    }
    const auto& point = static_cast<const nmk2dSearchNode&>(node).point();
    const nmk_lattice::GridCell cell = m_plane.searched_cell(point);
    const nmkSearchNodeVerifierResult result = judge(parent, cell);
    if (result == nmkSearchNodeVerifierResult::accepted) {
        note(cell);
    }
    return result;
}

nmkSearchNodeVerifierResult PlaneVerifier::judge(const nmkSearchNode& parent,
                                                 nmk_lattice::GridCell cell) const {
    if (m_plane.is_blocked(cell)) {
        return nmkSearchNodeVerifierResult::refused_for_good;
    }
    if (!m_cut_corners) {
        // The parent of the start is not an nmk2dSearchNode.
        const auto* from = dynamic_cast<const nmk2dSearchNode*>(&parent);
        if (from != nullptr && cuts_a_corner(m_plane.searched_cell(from->point()), cell)) {
            return nmkSearchNodeVerifierResult::refused_for_this_parent;
        }
    }
    return nmkSearchNodeVerifierResult::accepted;
}

bool PlaneVerifier::cuts_a_corner(nmk_lattice::GridCell from, nmk_lattice::GridCell to) const {
    return m_plane.is_blocked({from.column, to.row}) || m_plane.is_blocked({to.column, from.row});
}

void PlaneVerifier::note(nmk_lattice::GridCell cell) const {
    m_record.closed.push_back(cell);
    if (m_record.progress != nullptr && m_record.closed.size() % report_every == 0 &&
        m_record.progress->jump_to(static_cast<double>(m_record.closed.size())) != 0) {
        throw SearchStopped();
    }
}

}  // namespace nmk_route
