// ccAdjacency: finds the neighbour of each triangle across each of its edges.
//
// Two triangles are neighbours across an edge that both have, one in either direction, as two
// triangles that are wound alike have. Where more than two meet in an edge, they are paired: first
// those whose planes continue each other within the angle, then each with the next one around the
// edge that has it in the opposite direction; what is left over has no neighbour. An edge between
// two nodes at one place is linked to its own triangle, so that it is not a free one.
#pragma once

#include <geometry/giTriBlock.h>
#include <ncamcontainer/coFeaturePool.h>

#pragma GCC visibility push(default)

enum nmADJ_ERROR : int {
    nmADJ_OK = 0,
    nmADJ_NO_TRIANGLES = 1,  // the source lacks nodes or triangles; the target is unchanged
    nmADJ_NO_MEMORY = 2      // the target has no links
};

class ccAdjacency {
  public:
    /// Both pools are borrowed, and may be the same.
    ///
    ///   source      has giNodeXYZ and giTriArrcoFeature
    ///   target      receives giLinkArrcoFeature, a link for each triangle
    ///   by_index    non-zero: corners are shared where they have the same index; 0: where they are
    ///               at the same place within the tolerance
    ///   is_replacing  0 keeps links that the target has, and finds none
    ///   angle       degrees; see above
    ccAdjacency(const coFeaturePool& source, coFeaturePool& target, int by_index, int is_replacing,
                double angle);

    /// Finds the neighbours. A corner belongs to the first node, by index, that is at most
    /// `tolerance` away and belongs to none before; with a tolerance that is not above 0 only equal
    /// places match. Infinite coordinates match where they are equal, NaN never matches.
    nmADJ_ERROR create_adjacency(double tolerance);

  private:
    const coFeaturePool& m_source;
    coFeaturePool& m_target;
    int m_is_by_index;
    int m_is_replacing;
    double m_angle;
};

#pragma GCC visibility pop
