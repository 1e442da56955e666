// nmkWorkplaneUtils: questions about workplanes, and how they are transformed.
#pragma once

#include <geometry/giWorkplane3.h>
#include <geometry/giXform3.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectId.h>

class NMKTOOLBOX_EXPORT nmkWorkplaneUtils {
  public:
    /// The identifier of the mirror workplane. One for the whole process and not locked; invalid
    /// until it is set.
    static const nmkRefToObjectId& get_mirror_wp_id();
    static void set_mirror_wp_id(const nmkRefToObjectId& id);

    /// `plane` in the coordinates of `other`.
    static giWorkplane3 get_workplane_expressed_in_other(const giWorkplane3& plane,
                                                         const giWorkplane3& other);

    /// How far the origin of `a` lies above that of `b`, measured along the Z axis of `a`.
    static double get_z_shift(const giWorkplane3& a, const giWorkplane3& b);

    /// True where the origin of the plane is on the Z axis of the world with its own Z axis along
    /// it, in either sense: x and y of its origin are below `tolerance` in size, and the cross
    /// product of the Z axes is at most `tolerance` long.
    static bool suitable_for_turning(const giWorkplane3& plane, double tolerance);

    /// Transforms a workplane. A map that changes the hand keeps Y and Z as they are mapped and
    /// reverses X against the mapped one, so that `out` is right-handed.
    ///
    ///   out      may be `in` itself
    ///   returns  true; false, with `out` as it was, where a map that changes the hand does not
    ///            leave the axes perpendicular (within 0.001 radians)
    static bool transform(const giXform3& xform, const giWorkplane3& in, giWorkplane3& out);

    /// A workplane with the normal `axis`. Its reference direction is axis x (0, 0, 1), or
    /// axis x (0, 1, 0) where that counts as zero. An unset origin counts as (0, 0, 0).
    static giWorkplane3 workplane_with_axis(const giVector3& axis, const giPoint3& origin);

  private:
    nmkWorkplaneUtils() = delete;
};
