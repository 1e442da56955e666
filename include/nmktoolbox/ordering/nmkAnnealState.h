// nmkAnnealState: the interface between the annealer and an ordering problem.
//
// A state is one configuration of the problem and its energy, which the annealer minimises. The
// annealer proposes a move with candidate_new_state and either applies it with accept_new_state or
// drops it: rejection is silent, and the next proposal overwrites the last.
//
// The class has no data. A state belongs to one annealer at a time and is used on one thread.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utTypeID.h>

class NMKTOOLBOX_EXPORT nmkAnnealState {
  public:
    nmkAnnealState() = default;
    nmkAnnealState(const nmkAnnealState&) = default;

    /// The run-time type of the object.
    virtual const utTypeID& ut_dynamic_type() const;

    /// Non-zero if the type that ut_dynamic_type reports is `type` or derives from it, or if this
    /// class does. A class of your own overrides ut_dynamic_type, and need not override this.
    virtual int ut_is_kind_of(const utTypeID& type) const;

    /// Number of candidate moves to try at each temperature.
    virtual int size() = 0;

    /// Puts the state in its start configuration.
    ///
    /// Returns its energy, or a negative number when there is nothing to anneal: the order is
    /// settled already, or there are too few items.
    virtual double initialise() = 0;

    /// Jumps to a random configuration and returns its energy.
    virtual double randomise() = 0;

    /// Chooses a random move without applying it; returns the energy that it would lead to.
    ///
    /// May be called again without an accept_new_state in between.
    virtual double candidate_new_state() = 0;

    /// Applies the move that candidate_new_state proposed last.
    virtual void accept_new_state() = 0;

    /// Copies the configuration of a state of the same kind.
    virtual nmkAnnealState& operator=(const nmkAnnealState& other) = 0;

    virtual ~nmkAnnealState();

    static const utTypeID& ut_static_type();
    static nmkAnnealState* ut_dynamic_cast(nmkAnnealState* state);
    static const nmkAnnealState* ut_dynamic_cast(const nmkAnnealState* state);
};
