// nmkAnnealItemOrientedTP: a toolpath with a tool axis and a place in the sequence of those that
// share it.
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

    ///   start, end          the two ends of the toolpath
    ///   orientation_number  which orientation it belongs to
    ///   orientation         the tool axis
    ///   order_number        its place in the sequence within that orientation
    nmkAnnealItemOrientedTP(giPoint3 start, giPoint3 end, int orientation_number,
                            giUnitVec3 orientation, int order_number);
    nmkAnnealItemOrientedTP(const nmkAnnealItemOrientedTP&) = default;

    /// Takes over what the five accessors of `other` answer.
    nmkAnnealItemOrientedTP& operator=(const nmkAnnealItemOrientedTP& other);

    giPoint3 start_point(int state) const override;
    giPoint3 end_point(int state) const override;
    ~nmkAnnealItemOrientedTP() override;

    /// Its place in the sequence within its orientation.
    virtual int order_id() const;

    /// Which orientation it belongs to.
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
