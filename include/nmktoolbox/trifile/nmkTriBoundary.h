// nmkTriBoundary: walks the free edges of a block of triangles.
//
// The neighbours of the triangles are found on the first visit and kept, as giLinkArrcoFeature, in
// the target block, usually the block itself. Blocks are borrowed. For one thread at a time.
#pragma once

#include <geometry/giPoint3.h>
#include <ncamcontainer/coSender.h>
#include <nmktoolbox/export.h>

#include <cstdint>

class giTriBlock;

/// How it is found whether triangles share nodes.
enum nmkTriBoundaryMethod : std::int32_t {
    nmkTriBoundaryBySize = 0,   // by index, unless there are three nodes for each triangle
    nmkTriBoundaryByIndex = 1,  // by index; any other value: by place, within the tolerance
    nmkTriBoundaryByPlace = 2
};

/// The reason that is announced when the blocks, their links or their nodes may have changed.
NMKTOOLBOX_EXPORT extern const coCallReason nmkTriBoundaryCR_mod;

class NMKTOOLBOX_EXPORT nmkTriBoundary {
  public:
    /// Called with the ends of an edge and what was given to visit; non-zero stops the visit.
    using Visitor = int (*)(const giPoint3& from, const giPoint3& to, void* data);

    /// The block is source and target; links that it has are removed.
    explicit nmkTriBoundary(giTriBlock* block);
    nmkTriBoundary(const nmkTriBoundary&) = delete;
    nmkTriBoundary& operator=(const nmkTriBoundary&) = delete;

    /// Sets source and target and removes the target's links; with `create` not 0 new ones are
    /// found. Announces before and, where links were found, after. Returns 0 where the target has
    /// links then, else 1: also for a null block, with `create` 0, and for a source without nodes
    /// or triangles.
    int set_triblock(giTriBlock* block, int create);
    int set_triblock(const giTriBlock* source, giTriBlock* target, int create);

    /// Degrees, 20 at first: where more than two triangles meet, those whose planes continue each
    /// other within the angle are neighbours first. Removes the links.
    void set_angle(double angle);

    /// 1e-05 at first: how far apart corners at one place may be. Removes the links.
    void set_tolerance(double tolerance);

    /// nmkTriBoundaryBySize at first. Keeps the links.
    void set_boundary_method(nmkTriBoundaryMethod method) noexcept;

    /// Removes the links of the target.
    void delete_links();

    /// Calls `fn` for each edge that has no triangle across it, finding the links first where the
    /// target has none: triangle by triangle, each edge in the winding direction of its triangle.
    /// The edges do not follow each other as a chain. Returns 1 where `fn` returned anything but 0;
    /// else 0, also where there is no block or no link. `fn` must leave the blocks and the settings
    /// of this object as they are.
    int visit(Visitor fn, void* data);

    /// From now on an announcement of `sender` for that reason makes the block that it announces
    /// source and target, without links. Both are borrowed; this may end first.
    void listen_enabled(coSender* sender, coCallReason reason);

    /// What announces nmkTriBoundaryCR_mod.
    coSender& sender() noexcept { return m_sender; }

  private:
    static void nmkTriBoundarycofeature_modified1(void* boundary, void* block);

    void cofeature_modified(void* block);
    void take_blocks(const giTriBlock* source, giTriBlock* target);
    void announce();
    int shares_by_index(int nodes, int triangles) const noexcept;

    coSender m_sender;
    coReceiver m_receiver;
    const giTriBlock* m_source;
    giTriBlock* m_target;
    double m_tolerance;
    double m_angle;
    nmkTriBoundaryMethod m_method;
};
