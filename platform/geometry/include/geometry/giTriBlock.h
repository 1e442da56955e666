// giTriBlock.h: a block of triangles, and the features that it is made of.
//
// Nodes, normals and triangles are arrays; a triangle has the indices of its nodes, from 0 in its
// block. Where a block has normals, there is one for each node, at the same index.
#pragma once

#include <geometry/giBoxArrPoint3.h>
#include <geometry/giTriangle.h>
#include <geometry/giVector3.h>
#include <ncamcontainer/coFeaturePool.h>
#include <ncamcontainer/coSList.h>

using giNormArr = coPageArr<giVector3>;

using giBoxArrPoint3coFeature = coDataFeature<giBoxArrPoint3>;

/// The nodes.
class UT_EXPORT giNodeXYZ : public giBoxArrPoint3coFeature {
  public:
    basecoFeature* create() const override;
    const coFeatureID& get_id() const override;
};

/// The unit normals of the nodes.
class UT_EXPORT giNormArrcoFeature : public coDataFeature<giNormArr> {
  public:
    basecoFeature* create() const override;
    const coFeatureID& get_id() const override;
};

/// The triangles.
class UT_EXPORT giTriArrcoFeature : public coDataFeature<giTriArr> {
  public:
    basecoFeature* create() const override;
    const coFeatureID& get_id() const override;
};

/// The neighbours of the triangles.
class UT_EXPORT giLinkArrcoFeature : public coDataFeature<giLinkArr> {
  public:
    basecoFeature* create() const override;
    const coFeatureID& get_id() const override;
};

class UT_EXPORT giTriBlock : public coFeaturePool {
  public:
    using coFeaturePool::coFeaturePool;
};

/// A list of blocks, which does not own them.
using giTriBlockcoSListPtrcoPtrcoSList = coSList<giTriBlock*>;

/// Releases memory of nodes, normals and triangles that is not needed.
UT_EXPORT void gi_repage_tri_block(giTriBlock& block);
