// nmkAnnealItemOrientedTP: a toolpath with a tool axis, and a sequence number among the toolpaths
// of the same axis.
//
// Its ends are the same in every state.
#pragma once

#include <geometry/giUnitVec3.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkAnnealItemTP.h>

class NMKTOOLBOX_EXPORT nmkAnnealItemOrientedTP : public nmkAnnealItemTP {
  public:
    /// Ends and axis unset, both numbers 0.
    nmkAnnealItemOrientedTP();

    ///   from, to         the two ends of the toolpath
    ///   axis_number      the orientation that it belongs to
    ///   axis             the tool axis
    ///   sequence_number  its sequence number within that orientation
    nmkAnnealItemOrientedTP(giPoint3 from, giPoint3 to, int axis_number, giUnitVec3 axis,
                            int sequence_number);
    nmkAnnealItemOrientedTP(const nmkAnnealItemOrientedTP&) = default;

    /// Takes over what the five accessors of `other` return.
    nmkAnnealItemOrientedTP& operator=(const nmkAnnealItemOrientedTP& other);

    giPoint3 start_point(int state) const override;
    giPoint3 end_point(int state) const override;
    ~nmkAnnealItemOrientedTP() override;

    /// Its sequence number within its orientation.
    virtual int order_id() const;

    /// The orientation that it belongs to.
    virtual int orientation_id() const;

    /// The tool axis.
    virtual giUnitVec3 orientation_vector() const;

  private:
    giPoint3 start;
    giPoint3 end;
    giUnitVec3 orientation;
    int orientation_number = 0;
    int order_number = 0;
};
