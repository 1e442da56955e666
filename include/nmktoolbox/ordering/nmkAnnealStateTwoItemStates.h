// nmkAnnealStateTwoItemStates: toolpaths that can each be run in two ways, in the order of a short
// path or closed tour.
//
// A move either exchanges two equally long blocks of positions or turns one toolpath to its other
// state. The states stand in `item_states`, by item number.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkAnnealItemTP.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>

class NMKTOOLBOX_EXPORT nmkAnnealStateTwoItemStates : public nmkAnnealOrderState {
  public:
    /// Shares the toolpaths of `paths`, which is copied, and initialises the order.
    ///
    ///   closed  non-zero for a tour that leads back to the first toolpath
    nmkAnnealStateTwoItemStates(const nmkAnnealItemTPcoPageArrPrfINTERNALcoPrfcoPageArr& paths,
                                int closed);
    nmkAnnealStateTwoItemStates(const nmkAnnealStateTwoItemStates&) = default;

    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;

    /// Puts the toolpaths in the order of their numbers, each in state 0.
    ///
    /// Answers the length, or -1.0 with one toolpath or none.
    double initialise() override;

    /// Shuffles the order and the states; answers the length.
    double randomise() override;
    double candidate_new_state() override;

    /// Applies the pending move and forgets it; does nothing without a valid one.
    void accept_new_state() override;

    /// Copies paths and configuration, but not the block length.
    ///
    /// A source of another kind changes nothing.
    nmkAnnealState& operator=(const nmkAnnealState& other) override;
    nmkAnnealStateTwoItemStates& operator=(const nmkAnnealStateTwoItemStates& other);
    ~nmkAnnealStateTwoItemStates() override;

    /// From where `item_a` ends to where `item_b` starts, each in its state, in space.
    double distance(int item_a, int item_b) override;

    /// The length of the open path, with the way back where the tour is closed.
    double total_distance() override;

    static const utTypeID& ut_static_type();
    static nmkAnnealStateTwoItemStates* ut_dynamic_cast(nmkAnnealState* state);
    static const nmkAnnealStateTwoItemStates* ut_dynamic_cast(const nmkAnnealState* state);

  protected:
    int num_item_states(int item) override;

    /// Draws the two positions and the block length of an exchange.
    void get_swap_candidate();

    /// Draws the position of a toolpath to turn.
    void get_flip_candidate();

    double candidate_swap_state();
    double candidate_flip_state();
    void update_distance_swap_items();
    void update_distance_flip_item_states();

    /// Turns `item` to its other state: 1 becomes 0, anything else becomes 1.
    void flip_item_state(int item);

    bool has_valid_candidate() const;
    bool has_valid_swap_candidate() const;
    bool has_valid_flip_candidate() const;
    void invalidate_candidate();

  private:
    double distance_around(int position);

    nmkAnnealItemTPcoPageArrPrfINTERNALcoPrfcoPageArr paths;
    int closed;
    int swap_length = -1;
    int is_flip = 0;
    int flip_position = -1;
};
