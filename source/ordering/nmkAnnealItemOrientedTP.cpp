#include <nmktoolbox/ordering/nmkAnnealItemOrientedTP.h>

nmkAnnealItemOrientedTP::nmkAnnealItemOrientedTP() = default;

nmkAnnealItemOrientedTP::nmkAnnealItemOrientedTP(giPoint3 from, giPoint3 to, int axis_number,
                                                 giUnitVec3 axis, int sequence_number)
    : start(from),
      end(to),
      orientation(axis),
      orientation_number(axis_number),
      order_number(sequence_number) {}

// The ends are the same in every state, so any state number will do.
nmkAnnealItemOrientedTP& nmkAnnealItemOrientedTP::operator=(const nmkAnnealItemOrientedTP& other) {
    start = other.start_point(0);
    end = other.end_point(0);
    orientation = other.orientation_vector();
    orientation_number = other.orientation_id();
    order_number = other.order_id();
    return *this;
}

giPoint3 nmkAnnealItemOrientedTP::start_point(int) const { return start; }

giPoint3 nmkAnnealItemOrientedTP::end_point(int) const { return end; }

nmkAnnealItemOrientedTP::~nmkAnnealItemOrientedTP() = default;

int nmkAnnealItemOrientedTP::order_id() const { return order_number; }

int nmkAnnealItemOrientedTP::orientation_id() const { return orientation_number; }

giUnitVec3 nmkAnnealItemOrientedTP::orientation_vector() const { return orientation; }
