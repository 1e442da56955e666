// flat_access.h: the fields of the library's own states, for the loops that run on flat arrays.
//
// Only objects of exactly the library's types are run flat: a class that derives from one of them
// may have changed any operation, and is run through its operations.
#pragma once

#include <nmktoolbox/ordering/nmkAnnealStateNonReversible.h>
#include <nmktoolbox/ordering/nmkAnnealStatePoints.h>
#include <nmktoolbox/ordering/nmkAnnealStateReversibleLines.h>

#include <typeinfo>

namespace nmk_ordering {

class FlatAccess {
  public:
    /// `state` as a State if it is exactly that, else null.
    template <class State>
    static State* exactly(nmkAnnealState& state) {
        if (typeid(state) != typeid(State)) return nullptr;
        return static_cast<State*>(&state);
    }

    static intcoFixedArr& items(nmkAnnealOrderState& s) { return s.items; }
    static mlRandom& random(nmkAnnealOrderState& s) { return s.random; }
    static double& length(nmkAnnealOrderState& s) { return s.distance_value; }

    static void set_pending(nmkAnnealOrderState& s, int first, int second, double length) {
        s.candidate_1 = first;
        s.candidate_2 = second;
        s.candidate_distance = length;
    }
    static void clear_pending(nmkAnnealOrderState& s) { set_pending(s, -1, -1, -1.0); }

    static const giPoint3coPageArr& points(const nmkAnnealStatePoints& s) { return *s.points; }

    template <class Lines>
    static const giPoint3coPageArr& starts(const Lines& s) {
        return *s.start_points;
    }
    template <class Lines>
    static const giPoint3coPageArr& ends(const Lines& s) {
        return *s.end_points;
    }

    /// Whether a line is cut backwards; never where lines have one direction.
    static bool is_reversed(const nmkAnnealStateReversibleLines& s, int item) {
        return s.reverse_flags[item] != 0;
    }
    static bool is_reversed(const nmkAnnealStateNonReversible&, int) { return false; }

    static void set_reversed(nmkAnnealStateReversibleLines& s, int item, bool reversed) {
        s.reverse_flags[item] = reversed ? 1 : 0;
    }
    static void set_reversed(nmkAnnealStateNonReversible&, int, bool) {}

    static bool closed(const nmkAnnealStateNonReversible& s) { return s.closed != 0; }
    static int& swap_length(nmkAnnealStateNonReversible& s) { return s.swap_length; }
};

}  // namespace nmk_ordering
