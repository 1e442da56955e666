// nmkAppendTri: a triangle, or a whole block, appended to a block.
//
// Nodes are never shared with those that the block has. Only nodes, normals and triangles are
// copied from block to block; other features stay where they are.
#pragma once

#include <geometry/giTriBlock.h>
#include <nmktoolbox/export.h>

/// Appends a triangle with three nodes of its own. Where the block has normals, each of the three
/// nodes gets the facet normal (p2 - p1) x (p3 - p1), as a unit vector, or as it is where its
/// length is at most 1e-05. Normals that are missing below are zero vectors then. Returns 0.
NMKTOOLBOX_EXPORT int nmkAppendTri(giTriBlock* block, const giPoint3& p1, const giPoint3& p2,
                                   const giPoint3& p3);

/// The same with nine doubles, corner by corner. Returns 1, and appends nothing, where one of them
/// is NaN or its magnitude is at least the largest double: infinite, or the mark of an unset point.
NMKTOOLBOX_EXPORT int nmkAppendTri(giTriBlock* block, double const* const corners);

/// Appends copies of the nodes, normals and triangles of `source`. A block appended to itself
/// doubles. Returns 0.
///
/// Normals stay only where both blocks have the feature and `source` has at least one normal;
/// otherwise they are removed from `target`. They are copied only where `target` has at least one.
/// `source` gets the features of nodes and triangles where it lacks them, and is else unchanged.
NMKTOOLBOX_EXPORT int nmkAppendTri(giTriBlock* target, giTriBlock& source);
