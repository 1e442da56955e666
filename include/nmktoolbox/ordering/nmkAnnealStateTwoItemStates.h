// nmkAnnealStateTwoItemStates: toolpaths that can each be run in two ways, in the order of a short
// path or closed tour.
//
// A move either exchanges two equally long blocks of positions or flips one toolpath to its other
// state. `item_states` holds the states, by item number.
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkAnnealItemTP.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>

class NMKTOOLBOX_EXPORT nmkAnnealStateTwoItemStates : public nmkAnnealOrderState {
  public:
    /// Shares the toolpaths of `toolpaths`, which is copied, and initialises the order.
    ///
    ///   is_closed  non-zero for a tour that returns to the first toolpath
    nmkAnnealStateTwoItemStates(const nmkAnnealItemTPcoPageArrPrfINTERNALcoPrfcoPageArr& toolpaths,
                                int is_closed);
    nmkAnnealStateTwoItemStates(const nmkAnnealStateTwoItemStates&) = default;

    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;

    /// Puts the toolpaths in the order of their numbers, each in state 0.
    ///
    /// Returns the length, or -1.0 with one toolpath or none.
    double initialise() override;

    /// Shuffles the order and the states; returns the length.
    double randomise() override;
    double candidate_new_state() override;

    /// Applies the pending move and clears it; does nothing without a valid one.
    void accept_new_state() override;

    /// Copies paths and configuration, but not the block length.
    ///
    /// A source of another kind changes nothing.
    nmkAnnealState& operator=(const nmkAnnealState& other) override;
    nmkAnnealStateTwoItemStates& operator=(const nmkAnnealStateTwoItemStates& other);
    ~nmkAnnealStateTwoItemStates() override;

    /// From the end of `item_a` to the start of `item_b`, each in its state, in three dimensions.
    double distance(int item_a, int item_b) override;

    /// The length of the open path, plus that of the edge from last to first of a closed tour.
    double total_distance() override;

    static const utTypeID& ut_static_type();
    static nmkAnnealStateTwoItemStates* ut_dynamic_cast(nmkAnnealState* state);
    static const nmkAnnealStateTwoItemStates* ut_dynamic_cast(const nmkAnnealState* state);

  protected:
    int num_item_states(int item) override;

    /// Draws the two positions and the block length of an exchange.
    void get_swap_candidate();

    /// Draws the position of a toolpath to flip.
    void get_flip_candidate();

    double candidate_swap_state();
    double candidate_flip_state();
    void update_distance_swap_items();
    void update_distance_flip_item_states();

    /// Flips `item` to its other state: 1 becomes 0, anything else becomes 1.
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
