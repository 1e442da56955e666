// nmkAnnealOrderState: the common base of every ordering problem.
//
// A permutation of n items whose length is the energy. Moves are 2-opt: they reverse a span of
// positions, and the length is kept up to date by the few edges that a move changes. Derived
// classes supply the distance between two items and may change what a move is.
//
// Item numbers and positions both run from 0 to n - 1; `items` holds the item of each position.
//
// A class of your own that overrides operator=(const nmkAnnealState&) calls
// nmkAnnealOrderState::operator=(*source) to copy what this class holds.
#pragma once

#include <maths/mlRandom.h>
#include <ncamcontainer/builtin_containers.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkAnnealState.h>

namespace nmk_ordering {
class FlatAccess;
}

class NMKTOOLBOX_EXPORT nmkAnnealOrderState : public nmkAnnealState {
  public:
    /// `n` items; their arrays are zero until initialise.
    explicit nmkAnnealOrderState(int n);
    nmkAnnealOrderState(const nmkAnnealOrderState&) = default;

    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;

    /// The number of items.
    int size() override;

    /// Puts the items in the order of their numbers, each in state 0.
    ///
    /// Returns the length, or -1.0 with three items or fewer, which are not annealed.
    double initialise() override;

    /// Shuffles the items and returns the length. The states of the items stay.
    double randomise() override;

    double candidate_new_state() override;
    void accept_new_state() override;

    /// Copies order, item states, length and pending move, but not the generator.
    ///
    /// A source of another kind changes nothing.
    nmkAnnealState& operator=(const nmkAnnealState& other) override;

    /// The same. It calls the virtual operator, so that references to this class copy the whole of
    /// a derived state; called by the operator of a derived class, it copies what this class holds.
    nmkAnnealOrderState& operator=(const nmkAnnealOrderState& other);

    ~nmkAnnealOrderState() override;

    /// The length of the order, computed from all its edges.
    virtual double length();

    /// The distance from one item to another, by item number; 0.0 here.
    virtual double distance(int item_a, int item_b);

    /// The sum of the distances along the open path; 0.0 for one item or none.
    virtual double total_distance();

    int num_items() const;

    /// Copies the permutation: out[position] = item. `out` takes its size.
    void get_items(intcoFixedArr& out) const;

    /// Copies the state numbers of the items; `out` takes their size.
    void get_item_states(intcoFixedArr& out) const;

    static const utTypeID& ut_static_type();
    static nmkAnnealOrderState* ut_dynamic_cast(nmkAnnealState* state);
    static const nmkAnnealOrderState* ut_dynamic_cast(const nmkAnnealState* state);

  protected:
    /// Number of states that `item` can be in; 1 here.
    virtual int num_item_states(int item);

    /// Puts `item` in state number `state`; does nothing here.
    virtual void switch_item_to_state(int item, int state);

    /// Draws the two positions of a move: `first` is below `second`, with at least one between
    /// them.
    ///
    /// Needs four items or more.
    virtual void get_candidates(int& first, int& second);

    /// Computes `candidate_distance`, the length if the pending move were applied.
    virtual void update_candidate_distance();

    /// Maps a position that is at most n below zero into range.
    int normalise_index(int index) const;

    intcoFixedArr items;
    intcoFixedArr item_states;
    mlRandom random{1};
    double distance_value = -1.0;
    double candidate_distance = -1.0;
    int candidate_1 = -1;
    int candidate_2 = -1;

  private:
    friend class nmk_ordering::FlatAccess;

    /// 1 if the permutation contains every item, else 0. For debugging; takes n squared steps.
    int verify_result();
};
